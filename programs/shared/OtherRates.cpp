#include "programs/shared/OtherRates.h"

#include <utility>

namespace fexora::program {

OtherRates::OtherRates(const StoreManager& store) {
  tables_.push_back(
      tableOf(store.loadUSDRates().value_or(std::vector<USDRateRef>()), std::nullopt));
  std::vector<RatesTable> kept = keptTables(store.ud());
  const std::size_t before = 1 + rankBeforeBundle(kept);
  for (RatesTable& table : kept) {
    const bool isFile = table.origin == RatesAnswer::Origin::file;
    tables_.push_back(
        tableOf(std::move(table.rates),
                RateOrigin{table.published, std::move(table.source),
                           isFile ? Freshness::Origin::file : Freshness::Origin::service}));
  }
  tables_.insert(
      tables_.begin() + static_cast<std::ptrdiff_t>(before),
      tableOf(bundledUSDRates(), RateOrigin{bundledRatesDay(), {}, Freshness::Origin::bundled}));
}

OtherRates::Table OtherRates::tableOf(std::vector<USDRateRef> rates, std::optional<RateOrigin> of) {
  Table table{{{"USD", 1.0}}, std::move(of)};
  for (const USDRateRef& rate : withSuccessors(std::move(rates))) {
    const double value = rate->rate().doubleValue();
    if (value > 0) table.rates.try_emplace(rate->code(), value);
  }
  return table;
}

std::optional<OtherRates::Found> OtherRates::find(const CurrencyRef& source,
                                                  const CurrencyRef& destination) const {
  if (source->code() == destination->code()) return std::nullopt;
  for (const Table& table : tables_) {
    const auto from = table.rates.find(source->code());
    const auto to = table.rates.find(destination->code());
    if (from == table.rates.end() || to == table.rates.end()) continue;
    return Found{Rate(source, destination, to->second / from->second), table.of};
  }
  return std::nullopt;
}

}  // namespace fexora::program
