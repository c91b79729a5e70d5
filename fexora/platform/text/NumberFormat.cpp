#include "fexora/platform/text/NumberFormat.h"

#include <algorithm>
#include <cmath>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/text/Locale.h"

namespace fexora {
namespace {

constexpr int kMostDigits = 15;

// Digits after the mark that show `significant` digits of the value.
int digitsFor(double value, int significant) {
  if (value == 0 || !std::isfinite(value)) return 0;
  const int place = static_cast<int>(std::floor(std::log10(std::abs(value))));
  return std::clamp(significant - 1 - place, 0, limits::kFractionDigits);
}

}  // namespace

NumberFormat::NumberFormat(std::int64_t fraction, bool grouping, Text& rules)
    : fraction_(static_cast<int>(std::clamp<std::int64_t>(fraction, 0, kMostDigits))),
      grouping_(grouping),
      rules_(rules) {}

std::string NumberFormat::write(double value, int fewest, int most) const {
  NumberStyle style;
  style.minimumFractionDigits = fewest;
  style.maximumFractionDigits = std::max(fewest, most);
  style.grouping = grouping_;
  return rules_.formatNumber(value, Locale::current(), style);
}

std::string NumberFormat::amount(double value) const {
  const bool small = std::abs(value) < 1;
  return write(value, fraction_, small ? std::max(digitsFor(value, 3), fraction_) : fraction_);
}

std::string NumberFormat::rate(double value) const {
  return write(value, 0, std::max(digitsFor(value, 6), fraction_));
}

std::string NumberFormat::exact(double value) const {
  return write(value, 0, std::max(digitsFor(value, kMostDigits), 0));
}

}  // namespace fexora
