#include "programs/shared/OtherRates.h"

#include <utility>
#include <vector>

namespace fexora::program {

OtherRates::OtherRates(const StoreManager& store)
    : stored_(byCode(store.loadUSDRates().value_or(std::vector<USDRateRef>()))),
      bundled_(byCode(bundledUSDRates())) {}

OtherRates::Rates OtherRates::byCode(std::vector<USDRateRef> rates) {
  Rates found = {{"USD", 1.0}};
  for (const USDRateRef& rate : withSuccessors(std::move(rates))) {
    const double value = rate->rate().doubleValue();
    if (value > 0) found.try_emplace(rate->code(), value);
  }
  return found;
}

std::optional<Rate> OtherRates::pair(const Rates& rates, const CurrencyRef& source,
                                     const CurrencyRef& destination) {
  const auto from = rates.find(source->code());
  const auto to = rates.find(destination->code());
  if (from == rates.end() || to == rates.end() || from == to) return std::nullopt;
  return Rate(source, destination, to->second / from->second);
}

std::optional<OtherRates::Found> OtherRates::find(const CurrencyRef& source,
                                                  const CurrencyRef& destination) const {
  if (const auto rate = pair(stored_, source, destination)) return Found{*rate, std::nullopt};
  if (const auto rate = pair(bundled_, source, destination)) return Found{*rate, bundledRatesDay()};
  return std::nullopt;
}

}  // namespace fexora::program
