// The rates that come with the library, so that the first start can convert offline.
#pragma once

#include "fexora/store/StoreManager.h"

namespace fexora {

// Puts the bundled rates into the dictionary of a store that has none (no list, or an empty one),
// dated with the day they were taken, so that their age is shown truly. Writes nothing. True when
// it did. Main thread.
FEXORA_API bool seedBundledRates(StoreManager& store);

// Whether the store's rates are the bundled ones, date and figures: seeded now or by an earlier
// start. Makes no records. Main thread.
FEXORA_API bool hasBundledRates(const StoreManager& store);

}  // namespace fexora
