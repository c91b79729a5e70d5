// Typed amounts that say how sure their reading is. Beside parseAmount
// (platform/text/AmountParsing.h), which takes point and comma for one mark and so reads a copied
// "1.234" as a number close to one: here that text has two readings wherever the locale leaves it
// open.
//
// A text is a number with a currency before it, after it, both or none: "1,234.50", "-$100",
// "EUR 5", "1 234,50 zł", "US$ 7 USD". The number has
//   digits    decimal ones of any script, full-width ones too
//   a sign    "-" or U+2212, before or after the number or the currency; "+" before it
//   marks     "." "," U+066B, which may be the decimal mark, and "$" between digits, which is the
//             one of the escudos ("1$50", two digits after it); "." "," U+066C, apostrophes ("'"
//             and U+2019), blanks (U+0020, U+00A0, U+2009, U+202F, U+3000) and "_", which may stand
//             between groups; and the marks of the locale, whatever they are. Apostrophes are one
//             mark, and so are blanks. Full-width forms are taken for their ASCII ones
// Blanks around the parts, the directional marks U+200E, U+200F and U+061C, and U+200B (the sign of
// the Cape Verdean escudo) are passed over. What the marks mean:
//   two kinds           the last one is the decimal mark, the others stand between groups
//   one, several times  it stands between groups
//   one, once           after one to three digits, the first of them no zero, and before exactly
//                       three it is open: exact where it is the locale's decimal mark, else
//                       ambiguous. In any other place it is the decimal mark
//   one that can only group, or only be the decimal mark, is that one everywhere: "1 234" is exact
// Groups have three digits, or the sizes of the locale ("12,34,567" in India), and begin with no
// zero; those of other sizes are rejected, never repaired ("1.2.3"). No blank, apostrophe or
// underscore is a decimal mark unless the locale's is one.
// Where the locale writes other marks in money, those count as its marks beside a currency, and
// then no open place is exact. Nor is one beside a currency that has fewer than three digits after
// the mark; where it has none, the mark stands between groups ("¥1,234"), unless it is a point,
// which programs write, and the locale does not group with it. A number with "e" and a power of ten
// opens in the same way; one with another exponent of the locale's is what parseAmount reads there.
// After the number ",-", ".-" and "/-" mean that nothing is beyond it ("5,- €"), as ",--" does.
//
// A currency is a sign (catalogue/CurrencySigns.h) or a code of the library's table
// (catalogue/EnglishNames.h) in any case; a text that is both counts as the sign. After a letter or
// a slash a dot belongs to the sign ("Rp.500", "S/.100"), after any other sign to the number
// ("$.50"). Hundredths as exchanges quote them (GBp, GBX, ZAc, ILA) are told by `share`. "K" after
// a number is none of the signs, since most mean a thousand (input/Sentence.h). A sign that several
// currencies share is the currency of the locale's region, else the most traded one, and
// `currencyBy` says so; a code on the other side of the number decides it ("$5 CAD").
//
// Values are the doubles nearest to the decimal written. Too large ones are rejected, and so is
// everything longer than limits::kAmountBytes, at once. In C, POSIX and English (see
// Locale::hasPlainNumbers) nothing is opened for ASCII text.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/text/Locale.h"
#include "fexora/platform/text/Text.h"

namespace fexora {

struct TypedAmount {
  enum class Kind {
    exact,      // nobody reads it otherwise
    ambiguous,  // `value` is the locale's reading, or the decimal one where it says nothing
    refused,    // no amount: see `place` and `reason`
  };
  // What the currency was taken from.
  enum class CurrencyBy {
    none,    // the text names none
    code,    // a code
    sign,    // a sign of its own
    region,  // a sign or a name that several share, as the locale's region uses it
    trade,   // a sign or a name that several share, as the most traded of them
    name,    // a name of its own, or a country: of sentences only (input/Sentence.h)
  };

  Kind kind = Kind::refused;
  double value = 0.0;  // 0.0 when refused
  std::optional<double> other;
  std::string currency;  // its code, or empty
  double share = 1.0;    // 0.01 where hundredths of it were typed; `value` counts whole ones
  CurrencyBy currencyBy = CurrencyBy::none;
  // Of a refused text only: the byte where the trouble begins, and one line for a person, in
  // English, which lives as long as the process.
  std::size_t place = 0;
  std::string_view reason;
};

// Time grows with the length. Any thread.
FEXORA_API TypedAmount readAmount(std::string_view text,
                                  std::string_view locale = Locale::current(),
                                  Text& rules = Text::process());

}  // namespace fexora
