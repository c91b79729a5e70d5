#include "fexora/history/FigureQuotient.h"

#include <charconv>
#include <optional>

#include "fexora/platform/text/Decimal.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

constexpr int kSignificantDigits = 15;
// Numbers below it can be multiplied by ten once more.
constexpr std::uint64_t kMostOfFigure = 1'000'000'000'000'000'000;
constexpr std::uint64_t kBeyondDigits = 1'000'000'000'000'000;

struct Scaled {
  std::uint64_t digits = 0;
  int exponent = 0;
};

// "178.56" as 17856 × 10^-2; nothing where that takes more than 18 digits.
std::optional<Scaled> scaled(std::string_view figure) noexcept {
  Scaled number;
  bool isFraction = false;
  std::size_t at = 0;
  for (; at < figure.size() && figure[at] != 'e' && figure[at] != 'E'; ++at) {
    if (figure[at] == '.') {
      isFraction = true;
      continue;
    }
    if (number.digits >= kMostOfFigure / 10) return std::nullopt;
    number.digits = number.digits * 10 + static_cast<std::uint64_t>(figure[at] - '0');
    if (isFraction) --number.exponent;
  }
  if (at == figure.size()) return number;
  int exponent = 0;
  if (++at < figure.size() && figure[at] == '+') ++at;
  const auto read = std::from_chars(figure.data() + at, figure.data() + figure.size(), exponent);
  if (read.ec != std::errc()) return std::nullopt;
  number.exponent += exponent;
  return number;
}

// Exactly: a number below 2^53 by a power of ten that is a double. Nothing beyond these powers.
std::optional<double> timesPowerOfTen(std::uint64_t digits, int exponent) noexcept {
  static constexpr std::array<double, 23> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                     1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                     1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  const auto number = static_cast<double>(digits);
  const auto power = static_cast<std::size_t>(exponent < 0 ? -exponent : exponent);
  if (power >= kPowers.size()) return std::nullopt;
  return exponent < 0 ? number / kPowers[power] : number * kPowers[power];
}

// Rounds away the last of `digits` while there are too many; `rest`: something follows them.
void cutToDigits(Scaled& number, bool rest) noexcept {
  std::uint64_t unit = 1;
  while (number.digits / unit >= kBeyondDigits) {
    unit *= 10;
    ++number.exponent;
  }
  if (unit == 1) return;
  const std::uint64_t last = number.digits % unit;
  number.digits /= unit;
  const std::uint64_t half = unit / 2;
  const bool isOdd = number.digits % 2 != 0;
  if (last > half || (last == half && (rest || isOdd))) ++number.digits;
}

// By long division, as far as one digit more than is wanted.
Scaled divided(std::uint64_t top, std::uint64_t bottom, bool& rest) noexcept {
  Scaled quotient{top / bottom, 0};
  std::uint64_t left = top % bottom;
  while (quotient.digits < kBeyondDigits && left != 0) {
    left *= 10;
    quotient.digits = quotient.digits * 10 + left / bottom;
    left %= bottom;
    --quotient.exponent;
  }
  rest = left != 0;
  return quotient;
}

}  // namespace

void FigureQuotient::Product::add(std::string_view figure) noexcept {
  if (count == figures.size()) return;
  figures[count++] = figure;
  const auto number = scaled(figure);
  if (!number || number->digits == 0 || digits > kMostOfFigure / number->digits) {
    isExact = false;
    return;
  }
  digits *= number->digits;
  exponent += number->exponent;
}

double FigureQuotient::value() const {
  if (!top_.isExact || !bottom_.isExact) return slowValue();
  bool rest = false;
  Scaled quotient = divided(top_.digits, bottom_.digits, rest);
  cutToDigits(quotient, rest);
  const auto value =
      timesPowerOfTen(quotient.digits, quotient.exponent + top_.exponent - bottom_.exponent);
  return value ? *value : slowValue();
}

double FigureQuotient::slowValue() const {
  Decimal number = Decimal::fromDouble(1.0);
  for (std::size_t i = 0; i < top_.count; ++i) {
    number.multiplyBy(Decimal::fromText(top_.figures[i]).value_or(Decimal()));
  }
  for (std::size_t i = 0; i < bottom_.count; ++i) {
    const auto divisor = Decimal::fromText(bottom_.figures[i]);
    if (divisor && !divisor->isZero()) number.divideBy(*divisor);
  }
  number.roundToDigits(kSignificantDigits);
  return number.value();
}

}  // namespace fexora
