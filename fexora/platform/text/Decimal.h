// A decimal number kept as its digits, so that rounding sees the number as it was written and not
// the double nearest to it: 2.675 to two digits is 2.68, although the double lies below.
// Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

// Where a number between two neighbours goes. `up` and the half in `halfUp` go away from zero,
// `down` and that in `halfDown` towards it.
enum class DecimalRounding : std::uint8_t { halfEven, halfUp, halfDown, up, down };

class FEXORA_API Decimal {
 public:
  // Digits with an optional minus, point and exponent ("-12.5E+3"); nothing for any other text. An
  // exponent out of range is clamped to ±10^9.
  static std::optional<Decimal> fromText(std::string_view text);
  // The shortest decimal that reads back to `finite`.
  static Decimal fromDouble(double finite);

  // Keeps at most `fractionDigits` digits after the point; less than none cuts whole digits off.
  void round(int fractionDigits, DecimalRounding mode = DecimalRounding::halfEven);

  // Keeps at most `digits` of them, from the first that is not zero.
  void roundToDigits(int digits) { round(static_cast<int>(digits - point_)); }

  void multiplyBy(const Decimal& factor);
  // By any but zero, of which the first 18 digits count. An endless quotient is cut off after 40
  // digits, with a last one that is not zero: rounding it, to a double too, is rounding the whole.
  void divideBy(const Decimal& divisor);

  // The nearest double; infinite when it is too large.
  double value() const;

  bool negative() const noexcept { return negative_; }
  bool isZero() const noexcept { return digits_.empty(); }
  // The digits before the point, at least "0", and those after it without zeros at the end. Only
  // for a number that came from a double: one written as 1E999999999 has too many.
  std::string integerDigits() const;
  std::string fractionDigits() const;

 private:
  // The number is 0.digits × 10^point; neither end of the digits is a zero.
  void trim();
  bool goesUp(std::int64_t kept, DecimalRounding mode) const;
  void raiseLast(std::int64_t kept);

  bool negative_ = false;
  std::string digits_;
  std::int64_t point_ = 0;
};

}  // namespace fexora
