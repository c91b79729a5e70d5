#include "fexora/platform/text/Decimal.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

constexpr std::int64_t kLargestExponent = 1'000'000'000;

bool isDigit(char c) noexcept {
  return c >= '0' && c <= '9';
}

// The digits at the head of `text`, which is shortened by them.
std::string_view takeDigits(std::string_view& text) {
  const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
  const auto count = static_cast<std::size_t>(end - text.begin());
  const std::string_view digits = text.substr(0, count);
  text.remove_prefix(count);
  return digits;
}

bool takeSign(std::string_view& text, char sign) {
  if (!text.starts_with(sign)) return false;
  text.remove_prefix(1);
  return true;
}

std::optional<std::int64_t> exponentOf(std::string_view text) {
  const bool negative = takeSign(text, '-');
  if (!negative) takeSign(text, '+');
  const std::string_view digits = takeDigits(text);
  if (digits.empty() || !text.empty()) return std::nullopt;
  std::int64_t power = 0;
  const auto error = std::from_chars(digits.data(), digits.data() + digits.size(), power).ec;
  if (error != std::errc() || power > kLargestExponent) power = kLargestExponent;
  return negative ? -power : power;
}

}  // namespace

std::optional<Decimal> Decimal::fromText(std::string_view text) {
  Decimal number;
  number.negative_ = takeSign(text, '-');
  const std::string_view whole = takeDigits(text);
  std::string_view fraction;
  if (takeSign(text, '.')) fraction = takeDigits(text);
  if (whole.empty() && fraction.empty()) return std::nullopt;
  number.digits_.append(whole).append(fraction);
  number.point_ = static_cast<std::int64_t>(whole.size());
  if (takeSign(text, 'E') || takeSign(text, 'e')) {
    const auto exponent = exponentOf(text);
    if (!exponent) return std::nullopt;
    number.point_ += *exponent;
  } else if (!text.empty()) {
    return std::nullopt;
  }
  number.trim();
  return number;
}

Decimal Decimal::fromDouble(double finite) {
  std::array<char, 32> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), finite,
                                 std::chars_format::scientific)
                       .ptr;
  const auto size = static_cast<std::size_t>(end - buffer.data());
  return fromText({buffer.data(), size}).value_or(Decimal());
}

void Decimal::trim() {
  const auto first = std::min(digits_.find_first_not_of('0'), digits_.size());
  digits_.erase(0, first);
  point_ -= static_cast<std::int64_t>(first);
  digits_.erase(digits_.find_last_not_of('0') + 1);
  if (digits_.empty()) point_ = 0;
}

void Decimal::round(int fractionDigits) {
  const std::int64_t kept = point_ + fractionDigits;
  if (kept >= static_cast<std::int64_t>(digits_.size())) return;
  if (kept < 0) {
    digits_.clear();
    return trim();
  }
  const auto cut = static_cast<std::size_t>(kept);
  const bool tie = digits_[cut] == '5' && cut + 1 == digits_.size();
  const bool oddBefore = cut > 0 && (digits_[cut - 1] - '0') % 2 != 0;
  const bool up = tie ? oddBefore : digits_[cut] >= '5';
  digits_.erase(cut);
  if (up) {
    // The digits all nine become one more digit in front.
    const auto last = digits_.find_last_not_of('9');
    if (last == std::string::npos) {
      digits_.assign(1, '1');
      ++point_;
    } else {
      ++digits_[last];
      digits_.erase(last + 1);
    }
  }
  trim();
}

double Decimal::value() const {
  std::string text = negative_ ? "-0." : "0.";
  text.append(digits_).append("0e");
  appendIntegerText(text, point_);
  return parseDouble(text).value_or(0.0);
}

std::string Decimal::integerDigits() const {
  if (point_ <= 0) return "0";
  std::string whole = digits_.substr(0, static_cast<std::size_t>(point_));
  whole.resize(static_cast<std::size_t>(point_), '0');
  return whole;
}

std::string Decimal::fractionDigits() const {
  if (point_ >= static_cast<std::int64_t>(digits_.size())) return {};
  if (point_ >= 0) return digits_.substr(static_cast<std::size_t>(point_));
  std::string fraction(static_cast<std::size_t>(-point_), '0');
  fraction.append(digits_);
  return fraction;
}

}  // namespace fexora
