// Loads fresh rates into the store.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "programs/fexora/Store.h"
#include "programs/shared/Failure.h"
#include "programs/sources/NamedSources.h"

namespace fexora::program {

// How many codes have a rate in the store, whatever its day.
std::size_t countOfRates(const StoreManager& store);

// A stable word for programs.
const char* kindOf(const ResponseError& error);

// Runs the loop until `ended`, with the first address and what has come shown to a person who
// waits. Throws a Failure when there is no loop.
void waitFor(const sources::SourceStep& step, const Transfer::Progress& received,
             const bool& ended);

// Asks where the setting says, whenever that was done last, and returns. Later, on the main thread:
// `done` with nothing when the rates are in the store, else with why not, which says that the
// cached rates stay.
void startRefresh(const StoreManager& store, std::function<void(std::optional<Failure>)> done);

}  // namespace fexora::program
