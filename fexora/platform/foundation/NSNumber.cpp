#include "fexora/platform/foundation/NSNumber.h"

#include <cmath>

#include "fexora/platform/foundation/NumberText.h"

namespace fexora {

float NSNumber::floatValue() const noexcept {
  const double value = doubleValue();
  // A double beyond the float range has no defined conversion, so it is named infinite here.
  if (std::abs(value) > static_cast<double>(std::numeric_limits<float>::max())) {
    return std::copysign(std::numeric_limits<float>::infinity(), value < 0 ? -1.0F : 1.0F);
  }
  return static_cast<float>(value);
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
