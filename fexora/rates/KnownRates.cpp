#include "fexora/rates/KnownRates.h"

namespace fexora {

std::vector<KnownRate> knownRates(const CurrencyManager& catalogue,
                                  const std::vector<USDRateRef>& rates,
                                  std::vector<USDRateRef>* kept) {
  const CataloguePlaces places(catalogue);
  std::vector<KnownRate> known;
  known.reserve(rates.size());
  if (kept != nullptr) kept->reserve(kept->size() + rates.size());
  for (const USDRateRef& rate : rates) {
    if (rate == nullptr) continue;
    const std::uint32_t place = places.ofCode(rate->code());
    if (place == CataloguePlaces::kNone) continue;
    known.push_back({place, rate->rate()});
    if (kept != nullptr) kept->push_back(rate);
  }
  return known;
}

}  // namespace fexora
