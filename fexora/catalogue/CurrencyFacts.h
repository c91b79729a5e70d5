// What is known about a currency beside its name: minor unit, cash, signs, where it is used, and
// what became of it.
//
// Out of the library's own table (see resources/currency-facts.tsv for the sources): every currency
// of resources/currencies.tsv and withdrawn ones besides. A host adds what came later. Nothing here
// says whether a catalogue or a rates service knows the code. Any thread, several at once.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/text/WordList.h"

namespace fexora {

enum class CurrencyKind : std::uint8_t {
  official,   // an active code of ISO 4217, funds codes and units of account included
  local,      // money in use that the standard does not list
  metal,      // a troy ounce of it
  crypto,     // a crypto currency or a token
  withdrawn,  // no longer legal tender
};

struct CurrencyFacts {
  std::string_view code{};
  CurrencyKind kind = CurrencyKind::official;

  // Digits after the decimal mark of the minor unit (ISO 4217); nothing where there is none or it
  // is not kept.
  std::optional<int> digits{};
  // As many of them as people write (Unicode CLDR): of the Iraqi dinar's three, none.
  std::optional<int> customaryDigits{};

  // The steps in which cash is paid, in units of the currency (0.05); 0 where any amount of the
  // minor unit can be, or where that is not known.
  double cashStep = 0.0;
  // Half a step goes to the smaller amount. Elsewhere it goes to the larger.
  bool cashHalfDown = false;

  // Signs in UTF-8, none with a blank in it: first the English one, then others ("CA$", "$").
  // Several currencies may share one. Empty where people write the code.
  WordList signs{};

  // Countries and territories where it is used, or for a withdrawn one was in the end: codes of
  // ISO 3166 part 1 (of part 3 for countries that are no more) and XK for Kosovo; the issuing one
  // first, where the code begins with it.
  WordList regions{};

  // The currency that took the place of a withdrawn one, and since when in coins and notes, as a
  // date of ISO 8601 that may end with the year or the month ("2002-01-01", "2007-07"). Empty:
  // none, or not known.
  std::string_view successor{};
  std::string_view replaced{};
  // By law `units` of this currency became `successorUnits` of the successor: 1.95583 DEM and
  // 1 EUR. Both 0 where law fixed no single ratio.
  double units = 0.0;
  double successorUnits = 0.0;
  // The last day on which it was legal tender anywhere, as "2001-12-31"; empty when not known.
  std::string_view lastDay{};
  // The first day on which the ratio held, in the form of `replaced`: years before the notes came
  // where that one was only a unit of account at first (DEM: "1999-01-01"). Empty: as `replaced`.
  std::string_view ratioSince{};

  bool hasRatio() const noexcept { return units > 0.0 && successorUnits > 0.0; }
};

// The facts of a code (case counts), or null. They stay valid, and as they are, to the end of the
// process.
FEXORA_API const CurrencyFacts* currencyFacts(std::string_view code) noexcept;

// Those of every code, by code; empty where there is no memory for the list.
FEXORA_API std::vector<const CurrencyFacts*> allCurrencyFacts();

// Adds rows, whose texts are copied. From then on a look-up finds them, and finds the last one
// added instead of an earlier one with its code; what was handed out before does not change. All or
// nothing: false, with nothing added, where a row has no code, a negative or not finite number,
// only one half of a ratio, a ratio without a successor or more than limits::kFractionDigits
// digits, and where there is no memory. Rows are kept to the end of the process.
FEXORA_API bool addCurrencyFacts(std::span<const CurrencyFacts> rows);

// How often rows were added: whoever keeps what he has read asks this before. Any thread.
FEXORA_API std::uint64_t currencyFactsChanges() noexcept;

}  // namespace fexora
