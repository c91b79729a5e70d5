// The rates that come with the library, so that the first start can convert offline.
#pragma once

#include <cstddef>
#include <vector>

#include "fexora/store/KeptRates.h"
#include "fexora/store/StoreManager.h"

namespace fexora {

// Puts the bundled rates into the dictionary of a store that has none (no list, or an empty one),
// dated with the day they were taken, so that their age is shown truly. Writes nothing. True when
// it did. Main thread.
FEXORA_API bool seedBundledRates(StoreManager& store);

// The bundled rates as records, and the day they were taken. May throw std::bad_alloc. Any thread.
FEXORA_API std::vector<USDRateRef> bundledUSDRates();
FEXORA_API Date bundledRatesDay() noexcept;

// How many of the tables answer before the bundled rates: those that are no older, and those of an
// unknown day, which somebody chose. Puts these first, each part in the order that it had. Any
// thread.
FEXORA_API std::size_t rankBeforeBundle(std::vector<RatesTable>& tables);

// Whether the store keeps rates, as loadUSDRates() would find them: a list that is not empty. Makes
// no records. Main thread.
FEXORA_API bool hasRates(const StoreManager& store);

// Whether the store's rates are the bundled ones, date and figures: seeded now or by an earlier
// start. Makes no records. Main thread.
FEXORA_API bool hasBundledRates(const StoreManager& store);

}  // namespace fexora
