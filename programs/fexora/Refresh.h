// Loads fresh rates into the store.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "programs/fexora/Store.h"
#include "programs/shared/Failure.h"

namespace fexora::program {

// A stable word for programs.
const char* kindOf(const ResponseError& error);

// Runs the loop until `ended`, with the address and what has come from there shown to a person who
// waits. Throws a Failure when there is no loop.
void waitFor(const std::string& address, const Transfer::Progress& received, const bool& ended);

// Sends a request whenever the last one was sent, and returns. Later, on the main thread: `done`
// with nothing when the rates are in the store, else with why not, which says that the cached rates
// stay.
void startRefresh(const StoreManager& store, std::function<void(std::optional<Failure>)> done);

}  // namespace fexora::program
