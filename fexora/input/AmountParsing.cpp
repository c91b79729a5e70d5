#include "fexora/input/AmountParsing.h"

#include <algorithm>
#include <string>

#include "fexora/platform/foundation/Limits.h"
#include "fexora/platform/foundation/Locale.h"
#include "fexora/platform/foundation/NSNumber.h"

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
  const std::string locale = Locale::current();
  return rules.parseNumber(withOneDecimalMark(text, rules.decimalSeparator(locale)), locale,
                           maxFractionDigints);
}

NSNumber::NSNumber(std::optional<std::string_view> string, std::optional<int> maxFractionDigints)
    : real_(parseAmount(string.value_or(std::string_view()), maxFractionDigints).value_or(0.0)),
      kind_(Kind::real) {}

NSNumber::NSNumber(const char* string, std::optional<int> maxFractionDigints)
    : NSNumber(string != nullptr ? std::optional<std::string_view>(string) : std::nullopt,
               maxFractionDigints) {}

}  // namespace fexora
