#include "programs/shared/OtherRates.h"

#include <utility>

namespace fexora::program {

OtherRates::OtherRates(const StoreManager& store) {
  add(store.loadUSDRates().value_or(std::vector<USDRateRef>()), std::nullopt);
  std::vector<RatesTable> kept = keptTables(store.ud());
  const std::size_t before = rankBeforeBundle(kept);
  const auto addBundle = [this] {
    add(bundledUSDRates(), RateOrigin{bundledRatesDay(), {}, Freshness::Origin::bundled});
  };
  for (RatesTable& table : kept) {
    if (&table == kept.data() + before) addBundle();
    const bool isFile = table.origin == RatesAnswer::Origin::file;
    add(std::move(table.rates),
        RateOrigin{table.published, std::move(table.source),
                   isFile ? Freshness::Origin::file : Freshness::Origin::service});
  }
  if (before == kept.size()) addBundle();
}

void OtherRates::add(std::vector<USDRateRef> rates, std::optional<RateOrigin> of) {
  Table table{{{"USD", 1.0}}, std::move(of)};
  for (const USDRateRef& rate : withSuccessors(std::move(rates))) {
    const double value = rate->rate().doubleValue();
    if (value > 0) table.rates.try_emplace(rate->code(), value);
  }
  tables_.push_back(std::move(table));
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
