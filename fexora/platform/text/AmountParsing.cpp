#include "fexora/platform/text/AmountParsing.h"

#include <algorithm>
#include <string>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/text/Locale.h"
#include "fexora/platform/text/PlainAmount.h"

namespace fexora {
namespace {

std::string withOneDecimalMark(std::string_view text, std::string_view separator) {
  const bool comma = separator == ",";
  std::string unified(text);
  std::replace(unified.begin(), unified.end(), comma ? '.' : ',', comma ? ',' : '.');
  return unified;
}

}  // namespace

std::optional<double> parseAmount(std::string_view text, std::optional<int> maxFractionDigints,
                                  Text& rules) {
  // Too long a text is no number; it need not be copied to find out.
  if (text.empty() || text.size() > limits::kAmountBytes) return std::nullopt;
  // Plain amounts mean the same wherever point and comma are the mark, and digits alone everywhere:
  // a number format takes ten times as long to find that out.
  const auto plain = maxFractionDigints ? std::nullopt : plainAmount(text);
  if (plain && !plain->hasMark()) return plain->value;
  const std::string locale = Locale::current();
  const std::string separator = rules.decimalSeparator(locale);
  if (plain && (separator == "." || separator == ",")) return plain->value;
  return rules.parseNumber(withOneDecimalMark(text, separator), locale, maxFractionDigints);
}

std::optional<double> parseAmountIn(std::string_view locale, std::string_view text, Text& rules) {
  if (text.size() > limits::kAmountBytes) return std::nullopt;
  const std::string separator = rules.decimalSeparator(locale);
  return rules.parseNumber(withOneDecimalMark(text, separator), locale, std::nullopt);
}

}  // namespace fexora
