#include "fexora/input/AmountParsing.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/text/Locale.h"
#include "fexora/platform/values/NSNumber.h"

namespace fexora {
namespace {

std::string withOneDecimalMark(std::string_view text, std::string_view separator) {
  const bool comma = separator == ",";
  std::string unified(text);
  std::replace(unified.begin(), unified.end(), comma ? '.' : ',', comma ? ',' : '.');
  return unified;
}

// What most people type: digits, perhaps one mark and more digits, fifteen in all at most.
struct PlainAmount {
  double value;
  bool hasMark;
};

// Up to 10^22 a power of ten is exact in a double, and so is a whole number of fifteen digits:
// their quotient is the double nearest to the decimal number.
constexpr std::size_t kExactDigits = 15;
constexpr std::array<double, kExactDigits + 1> kPowersOfTen = {
    1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

std::optional<PlainAmount> plainAmount(std::string_view text) {
  if (text.size() > kExactDigits + 1) return std::nullopt;
  std::int64_t digits = 0;
  std::size_t mark = text.size();
  for (std::size_t i = 0; i < text.size(); ++i) {
    const unsigned digit = static_cast<unsigned char>(text[i]) - unsigned{'0'};
    if (digit <= 9) {
      digits = digits * 10 + digit;
    } else if ((text[i] == '.' || text[i] == ',') && mark == text.size()) {
      mark = i;
    } else {
      return std::nullopt;
    }
  }
  const bool hasMark = mark != text.size();
  // Locales differ on a mark without digits on both of its sides; and sixteen digits are too many.
  if (hasMark ? mark == 0 || mark + 1 == text.size() : text.size() > kExactDigits) {
    return std::nullopt;
  }
  const std::size_t fraction = hasMark ? text.size() - mark - 1 : 0;
  return PlainAmount{static_cast<double>(digits) / kPowersOfTen[fraction], hasMark};
}

}  // namespace

std::optional<double> parseAmount(std::string_view text, std::optional<int> maxFractionDigints,
                                  Text& rules) {
  // Too long a text is no number; it need not be copied to find out.
  if (text.empty() || text.size() > limits::kAmountBytes) return std::nullopt;
  // Plain amounts mean the same wherever point and comma are the mark, and digits alone everywhere:
  // a number format takes ten times as long to find that out.
  const auto plain = maxFractionDigints ? std::nullopt : plainAmount(text);
  if (plain && !plain->hasMark) return plain->value;
  const std::string locale = Locale::current();
  const std::string separator = rules.decimalSeparator(locale);
  if (plain && (separator == "." || separator == ",")) return plain->value;
  return rules.parseNumber(withOneDecimalMark(text, separator), locale, maxFractionDigints);
}

NSNumber::NSNumber(std::optional<std::string_view> string, std::optional<int> maxFractionDigints)
    : real_(parseAmount(string.value_or(std::string_view()), maxFractionDigints).value_or(0.0)),
      kind_(Kind::real) {}

NSNumber::NSNumber(const char* string, std::optional<int> maxFractionDigints)
    : NSNumber(string != nullptr ? std::optional<std::string_view>(string) : std::nullopt,
               maxFractionDigints) {}

}  // namespace fexora
