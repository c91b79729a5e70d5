// Loads fresh rates from the service into the store.
#pragma once

#include <functional>
#include <optional>

#include "programs/fexora/Failure.h"
#include "programs/fexora/Store.h"

namespace fexora::program {

// Sends a request whenever the last one was sent, and returns. Later, on the main thread: `done`
// with nothing when the rates are in the store, else with why not, which says that the cached rates
// stay.
void startRefresh(const StoreManager& store, std::function<void(std::optional<Failure>)> done);

}  // namespace fexora::program
