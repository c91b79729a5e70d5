#include "fexora/platform/values/NSNumber.h"

#include <cmath>

#include "fexora/platform/text/AmountParsing.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {

NSNumber::NSNumber(std::optional<std::string_view> string, std::optional<int> maxFractionDigints)
    : real_(parseAmount(string.value_or(std::string_view()), maxFractionDigints).value_or(0.0)),
      kind_(Kind::real) {}

NSNumber::NSNumber(const char* string, std::optional<int> maxFractionDigints)
    : NSNumber(string != nullptr ? std::optional<std::string_view>(string) : std::nullopt,
               maxFractionDigints) {}

float NSNumber::floatValue() const noexcept {
  // A double beyond the largest float has no defined conversion. Half a step beyond it, the nearest
  // float would be the one that there is not.
  constexpr float kLargest = std::numeric_limits<float>::max();
  constexpr double kInfiniteFrom = 0x1.ffffffp127;
  const double value = doubleValue();
  const double size = std::abs(value);
  if (!(size > static_cast<double>(kLargest))) return static_cast<float>(value);
  const float nearest = size < kInfiniteFrom ? kLargest : std::numeric_limits<float>::infinity();
  return std::copysign(nearest, static_cast<float>(value < 0 ? -1 : 1));
}

std::int64_t NSNumber::intValue() const noexcept {
  if (kind_ != Kind::real) return integer_;
  if (std::isnan(real_)) return 0;
  constexpr double kTop = 9223372036854775808.0;  // 2^63
  if (real_ >= kTop) return std::numeric_limits<std::int64_t>::max();
  if (real_ < -kTop) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(real_);
}

std::string NSNumber::stringValue() const {
  return kind_ == Kind::real ? shortestText(real_) : integerText(integer_);
}

}  // namespace fexora
