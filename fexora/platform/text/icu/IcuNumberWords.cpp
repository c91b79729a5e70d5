#include "fexora/platform/text/icu/IcuNumberWords.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#include <unicode/numberformatter.h>
#include <unicode/uchar.h>

namespace fexora {
namespace {

using icu::number::Notation;
using icu::number::NumberFormatter;

// What is written is a whole number and, after it, the word: in "12 Tsd." the word of 12000 is
// "Tsd.". A word before the number, or none, gives nothing.
std::optional<NumberWord> wordOf(const icu::UnicodeString& written, std::int64_t value) {
  std::int64_t shown = 0;
  std::int32_t at = 0;
  for (; at < written.length(); at = written.moveIndex32(at, 1)) {
    const std::int32_t digit = u_charDigitValue(written.char32At(at));
    if (digit < 0) break;
    shown = shown * 10 + digit;
  }
  if (shown == 0 || value % shown != 0 || value == shown) return std::nullopt;
  icu::UnicodeString rest = written.tempSubString(at);
  for (const char16_t* mark : {u"\u200e", u"\u200f", u"\u061c"}) rest.findAndReplace(mark, u"");
  rest.trim();
  while (rest.startsWith(u"\u00a0") || rest.startsWith(u"\u202f")) rest.remove(0, 1);
  NumberWord word{{}, static_cast<double>(value / shown)};
  rest.toUTF8String(word.text);
  // What still has a digit or a mark of the number's in it is no word.
  const bool isPlain = !rest.isEmpty() && u_isUAlphabetic(rest.char32At(0)) != 0;
  return isPlain ? std::optional(std::move(word)) : std::nullopt;
}

}  // namespace

std::vector<NumberWord> shortNumberWords(const icu::Locale& locale) {
  constexpr std::int64_t kLargest = 1'000'000'000'000'000;
  // Of each plural form of any language.
  constexpr std::int64_t kCounts[] = {1, 2, 3, 5, 11, 20};
  std::vector<NumberWord> words;
  for (const Notation& notation : {Notation::compactLong(), Notation::compactShort()}) {
    const auto formatter = NumberFormatter::withLocale(locale)
                               .notation(notation)
                               .precision(icu::number::Precision::unlimited())
                               .grouping(UNUM_GROUPING_OFF);
    for (std::int64_t power = 1000; power < kLargest; power *= 10) {
      for (const std::int64_t count : kCounts) {
        UErrorCode error = U_ZERO_ERROR;
        const auto written = formatter.formatInt(count * power, error).toString(error);
        auto word = U_SUCCESS(error) != 0 ? wordOf(written, count * power) : std::nullopt;
        if (!word) continue;
        const bool isNew = std::none_of(words.begin(), words.end(), [&](const NumberWord& known) {
          return known.text == word->text;
        });
        if (isNew) words.push_back(*std::move(word));
      }
    }
  }
  return words;
}

}  // namespace fexora
