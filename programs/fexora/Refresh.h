// Loads fresh rates into the store.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "programs/fexora/Store.h"
#include "programs/shared/Failure.h"

namespace fexora::program {

// How many codes have a rate in the store, whatever its day.
std::size_t countOfRates(const StoreManager& store);

// Asks where the setting says, whenever that was done last, and returns. Later, on the main thread:
// `done` with nothing when the rates are in the store, else with why not, which says that the
// cached rates stay.
void startRefresh(const StoreManager& store, std::function<void(std::optional<Failure>)> done);

}  // namespace fexora::program
