// Asking the service for fresh rates.
#pragma once

#include <functional>

#include "fexora/fexora.h"

namespace fexora::program {

// Sends a request, however soon after the last one, and calls `done` once with its end: the new
// rates are in the store, or the error. Derives no pairs. Main thread.
void askForFreshRates(RateManager& rates, std::function<void(const ResponseError* error)> done);

}  // namespace fexora::program
