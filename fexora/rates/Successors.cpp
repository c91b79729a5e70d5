#include "fexora/rates/Successors.h"

#include <cmath>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/text/Decimal.h"

namespace fexora {
namespace {

// A host's rows may lead in a circle.
constexpr int kMostSuccessors = 32;

using Given = std::map<std::string_view, double>;

Given firstOfEachCode(const std::vector<USDRateRef>& rates) {
  Given given;
  for (const USDRateRef& rate : rates) {
    if (rate != nullptr) given.try_emplace(rate->code(), rate->rate().doubleValue());
  }
  return given;
}

std::optional<double> scaled(double rate, Decimal units, const Decimal& successorUnits) {
  if (!std::isfinite(rate) || rate <= 0.0) return std::nullopt;
  units.multiplyBy(Decimal::fromDouble(rate));
  units.divideBy(successorUnits);
  return units.value();
}

// The rate of a currency that is not given.
std::optional<double> rateOf(const CurrencyFacts* old, const Given& given) {
  Decimal units = Decimal::fromDouble(1.0);
  Decimal successorUnits = units;
  for (int i = 0; i < kMostSuccessors && old != nullptr && old->hasRatio(); ++i) {
    units.multiplyBy(Decimal::fromDouble(old->units));
    successorUnits.multiplyBy(Decimal::fromDouble(old->successorUnits));
    const auto at = given.find(old->successor);
    if (at != given.end()) return scaled(at->second, units, successorUnits);
    old = currencyFacts(old->successor);
  }
  return std::nullopt;
}

std::vector<USDRateRef> missingRates(const std::vector<USDRateRef>& rates) {
  std::vector<USDRateRef> missing;
  const Given given = firstOfEachCode(rates);
  for (const CurrencyFacts* const facts : allCurrencyFacts()) {
    if (facts->kind != CurrencyKind::withdrawn || given.contains(facts->code)) continue;
    if (const auto rate = rateOf(facts, given)) {
      missing.push_back(USDRate::make(*rate, std::string(facts->code)));
    }
  }
  return missing;
}

}  // namespace

std::vector<USDRateRef> withSuccessors(std::vector<USDRateRef> rates) {
  guarded(Log::process(), "Filling in rates of withdrawn currencies", [&] {
    const std::vector<USDRateRef> missing = missingRates(rates);
    rates.reserve(rates.size() + missing.size());
    rates.insert(rates.end(), missing.begin(), missing.end());
  });
  return rates;
}

}  // namespace fexora
