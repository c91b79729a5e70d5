#include "fexora/catalogue/MinorUnit.h"

#include <cmath>

#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/text/Decimal.h"

namespace fexora {
namespace {

DecimalRounding decimalMode(Rounding mode) noexcept {
  switch (mode) {
    case Rounding::halfEven:
      return DecimalRounding::halfEven;
    case Rounding::up:
      return DecimalRounding::up;
    case Rounding::down:
      return DecimalRounding::down;
    case Rounding::halfUp:
    case Rounding::cash:
      break;
  }
  return DecimalRounding::halfUp;
}

double rounded(Decimal amount, int digits, DecimalRounding mode) {
  amount.round(digits, mode);
  return amount.value();
}

double roundedToStep(Decimal amount, double step, DecimalRounding mode) {
  const Decimal unit = Decimal::fromDouble(step);
  amount.divideBy(unit);
  amount.round(0, mode);
  amount.multiplyBy(unit);
  return amount.value();
}

double roundedFinite(double value, const CurrencyFacts& facts, Rounding mode) {
  const Decimal amount = Decimal::fromDouble(value);
  if (mode == Rounding::cash && facts.cashStep > 0.0 && std::isfinite(facts.cashStep)) {
    return roundedToStep(amount, facts.cashStep,
                         facts.cashHalfDown ? DecimalRounding::halfDown : DecimalRounding::halfUp);
  }
  return facts.digits ? rounded(amount, *facts.digits, decimalMode(mode)) : value;
}

}  // namespace

double roundedToMinorUnit(double value, const CurrencyFacts& facts, Rounding mode) {
  if (!std::isfinite(value)) return value;
  // Adding zero takes the sign off a zero.
  return guardedOr(Log::process(), "Rounding an amount", value,
                   [&] { return roundedFinite(value, facts, mode) + 0.0; });
}

}  // namespace fexora
