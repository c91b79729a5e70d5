// What the library asks of Unicode and of a locale's numbers.
//
// The process's implementation answers plain ASCII itself and opens the text module (ICU) at the
// first text that needs it; where that module is missing it says so once in the log and goes on
// with ASCII rules. Text is UTF-8; broken UTF-8 is treated as U+FFFD. What an operation takes grows
// with the text alone, whatever is in it.
// Any thread, several at once. What answers with a text or a list may throw std::bad_alloc; nothing
// else is thrown.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/platform/base/Export.h"

namespace fexora {

// How a number is written for people.
struct NumberStyle {
  int maximumFractionDigits = 3;
  int minimumFractionDigits = 0;
  bool grouping = true;
};

// The marks within numbers of a locale, one code point each.
struct NumberMarks {
  char32_t decimal = U'.';
  char32_t grouping = U',';
  // The same in amounts of money: some locales have others there.
  char32_t currencyDecimal = U'.';
  char32_t currencyGrouping = U',';
  // Digits in the group before the decimal mark, and in each further one; those of money where
  // other numbers have groups of one size.
  int lastGroup = 3;
  int otherGroups = 3;
};

// A word for a power of ten beside a number, as a language writes it: "Mio." and 1e6.
struct NumberWord {
  std::string text;
  double factor;
};

class FEXORA_API Text {
 public:
  Text() = default;
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;
  virtual ~Text();

  // The Unicode default lower case, the same in every locale.
  virtual std::string lowercased(std::string_view text) = 0;

  // What is left for a lenient search: case and accents folded in all scripts, compatible forms
  // taken for one (full width, ligatures), and the Latin letters with a stroke, or of two, for the
  // plain ones ("ł", "æ"). Vowel signs and the voice marks of kana stay; of more than thirty marks
  // on one letter, which no writing has, only thirty.
  virtual std::string folded(std::string_view text) = 0;

  // One text for all canonically equivalent ones (NFD): equal texts have equal forms byte for byte.
  // Of more than thirty marks on one letter, which no writing has, the order counts.
  virtual std::string canonical(std::string_view text) = 0;

  // User-perceived characters (extended grapheme clusters).
  virtual std::size_t characterCount(std::string_view text) = 0;

  // The byte offset at which each user-perceived character ends, ascending; the last is the size.
  virtual std::vector<std::size_t> characterEnds(std::string_view text) = 0;

  // Whether `part` occurs in `whole` as a run of whole user-perceived characters, canonically
  // equivalent texts being equal; an empty part occurs nowhere. Case counts.
  virtual bool contains(std::string_view whole, std::string_view part) = 0;

  // The mark before the fraction in `locale`, in UTF-8.
  virtual std::string decimalSeparator(std::string_view locale) = 0;
  virtual NumberMarks numberMarks(std::string_view locale) = 0;

  // The number that the whole text denotes in the decimal style of `locale`; nothing for any other
  // text: the empty one, the sign for not-a-number and whatever is longer than
  // limits::kAmountBytes too. A number too large for a double is infinite.
  // With `maximumFractionDigits` the value is rounded to that many digits, half to even.
  virtual std::optional<double> parseNumber(std::string_view text, std::string_view locale,
                                            std::optional<int> maximumFractionDigits) = 0;

  // The number as people of `locale` write it, rounded half to even; infinite and not-a-number as
  // their signs there ("∞", "NaN").
  virtual std::string formatNumber(double value, std::string_view locale,
                                   const NumberStyle& style) = 0;

  // The name of the currency `code` in `locale`'s language ("US Dollar"); nothing where the
  // language data has none.
  virtual std::optional<std::string> currencyName(std::string_view code,
                                                  std::string_view locale) = 0;

  // Its names beside numbers, in every plural form of the language ("US dollar", "US dollars");
  // empty where the language data has none.
  virtual std::vector<std::string> currencyPlurals(std::string_view code,
                                                   std::string_view locale) = 0;

  // The words after a shortened number in `locale`, short and long ones ("Tsd.", "Millionen");
  // empty in English, which everybody knows, and where there is no language data.
  virtual std::vector<NumberWord> numberWords(std::string_view locale) = 0;

  // The names of a country or territory (ISO 3166) in `locale`'s language, or in that of most
  // people there when `locale` is empty: the usual one, then a shorter one if there is one ("United
  // Kingdom", "UK"). Empty where the language data has none.
  virtual std::vector<std::string> regionNames(std::string_view region,
                                               std::string_view locale) = 0;

  // The names of the locales that there is language data for, like "de" and "de_CH", in order;
  // empty where there is none at all.
  virtual std::vector<std::string> locales() = 0;

  // The library's own, and the one that the process uses: see Platform::process().
  static Text& builtIn();
  static Text& process();
};

// Whether two texts are canonically equivalent; equal bytes and plain ASCII ask nothing of `text`.
FEXORA_API bool equalText(Text& text, std::string_view a, std::string_view b);
FEXORA_API bool isAscii(std::string_view text) noexcept;

}  // namespace fexora
