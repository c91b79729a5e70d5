// The USD rates that have a currency in the catalogue, as compactly as the rate engine keeps them.
#pragma once

#include <cstdint>
#include <vector>

#include "fexora/catalogue/CataloguePlaces.h"
#include "fexora/records/USDRate.h"

namespace fexora {

struct KnownRate {
  std::uint32_t place;  // where the currency stands in the catalogue
  NSNumber rate;        // units of it that one US dollar buys
};

// The entries whose code the catalogue has, in their order, duplicates included. Null references
// are skipped. The entries themselves are added to `kept`, if it is given.
FEXORA_API std::vector<KnownRate> knownRates(const CurrencyManager& catalogue,
                                             const std::vector<USDRateRef>& rates,
                                             std::vector<USDRateRef>* kept = nullptr);

}  // namespace fexora
