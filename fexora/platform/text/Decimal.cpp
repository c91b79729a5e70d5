#include "fexora/platform/text/Decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

constexpr std::int64_t kLargestExponent = 1'000'000'000;
// Ten times a rest below it stays below 2^64.
constexpr std::size_t kDivisorDigits = 18;
constexpr std::size_t kQuotientDigits = 40;

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

void Decimal::round(int fractionDigits, DecimalRounding mode) {
  const std::int64_t kept = point_ + fractionDigits;
  if (kept >= static_cast<std::int64_t>(digits_.size())) return;
  const bool up = goesUp(kept, mode);
  digits_.erase(static_cast<std::size_t>(std::max(kept, std::int64_t{0})));
  if (up) raiseLast(kept);
  trim();
}

// Whether the digits from `kept` on, of which there are some and which are not all zero, become one
// more before them.
bool Decimal::goesUp(std::int64_t kept, DecimalRounding mode) const {
  if (mode == DecimalRounding::up || mode == DecimalRounding::down) {
    return mode == DecimalRounding::up;
  }
  // Before the first digit stand zeros.
  if (kept < 0) return false;
  const auto cut = static_cast<std::size_t>(kept);
  const bool tie = digits_[cut] == '5' && cut + 1 == digits_.size();
  if (!tie) return digits_[cut] >= '5';
  if (mode == DecimalRounding::halfEven) return cut > 0 && (digits_[cut - 1] - '0') % 2 != 0;
  return mode == DecimalRounding::halfUp;
}

// Adds one in the place of digit `kept` - 1, the last one left.
void Decimal::raiseLast(std::int64_t kept) {
  const auto last = digits_.find_last_not_of('9');
  if (last != std::string::npos) {
    ++digits_[last];
    digits_.erase(last + 1);
    return;
  }
  // The digits all nine become one more digit in front; where none are left, one stands there.
  point_ = digits_.empty() ? point_ - kept + 1 : point_ + 1;
  digits_.assign(1, '1');
}

void Decimal::multiplyBy(const Decimal& factor) {
  std::string product(digits_.size() + factor.digits_.size(), '\0');
  for (std::size_t i = digits_.size(); i-- > 0;) {
    int carry = 0;
    for (std::size_t j = factor.digits_.size(); j-- > 0;) {
      const int sum = product[i + j + 1] + (digits_[i] - '0') * (factor.digits_[j] - '0') + carry;
      product[i + j + 1] = static_cast<char>(sum % 10);
      carry = sum / 10;
    }
    product[i] = static_cast<char>(carry);
  }
  for (char& digit : product) digit = static_cast<char>(digit + '0');
  digits_ = std::move(product);
  point_ += factor.point_;
  negative_ = negative_ != factor.negative_;
  trim();
}

void Decimal::divideBy(const Decimal& divisor) {
  const std::string_view by = std::string_view(divisor.digits_).substr(0, kDivisorDigits);
  std::uint64_t whole = 0;
  std::from_chars(by.data(), by.data() + by.size(), whole);
  std::string quotient;
  std::uint64_t rest = 0;
  // Each digit of the dividend gives one of the quotient, the leading zeros among them.
  const std::size_t most = std::max(digits_.size(), by.size() + kQuotientDigits);
  for (std::size_t i = 0; i < most && (i < digits_.size() || rest != 0); ++i) {
    rest = rest * 10 + (i < digits_.size() ? static_cast<std::uint64_t>(digits_[i] - '0') : 0);
    quotient += static_cast<char>('0' + rest / whole);
    rest %= whole;
  }
  if (rest != 0) quotient += '1';
  point_ += static_cast<std::int64_t>(by.size()) - divisor.point_;
  negative_ = negative_ != divisor.negative_;
  digits_ = std::move(quotient);
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
