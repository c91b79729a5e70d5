#include "programs/fexora/NumberColumn.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "fexora/fexora.h"
#include "fexora/platform/base/Limits.h"

namespace fexora::program {
namespace {

constexpr int kMostDigits = 15;

// Digits after the mark that show `significant` digits of the value.
int digitsFor(double value, int significant) {
  if (value == 0 || !std::isfinite(value)) return 0;
  const int place = static_cast<int>(std::floor(std::log10(std::abs(value))));
  return std::clamp(significant - 1 - place, 0, limits::kFractionDigits);
}

// Characters, counted as code points: digits, marks and signs are one each in every locale.
std::size_t width(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
  }));
}

}  // namespace

NumberFormat::NumberFormat(std::int64_t fraction, bool grouping)
    : fraction_(static_cast<int>(std::clamp<std::int64_t>(fraction, 0, kMostDigits))),
      grouping_(grouping) {}

std::string NumberFormat::write(double value, int fewest, int most) const {
  NumberStyle style;
  style.minimumFractionDigits = fewest;
  style.maximumFractionDigits = std::max(fewest, most);
  style.grouping = grouping_;
  return Platform::process().text->formatNumber(value, Locale::current(), style);
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

void NumberColumn::add(std::string text) {
  widest_ = std::max(widest_, width(text));
  texts_.push_back(std::move(text));
}

std::string NumberColumn::aligned(std::size_t index) const {
  const std::string& text = texts_[index];
  return std::string(widest_ - width(text), ' ') + text;
}

}  // namespace fexora::program
