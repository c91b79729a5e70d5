// Rates from files, addresses and named sources in any form that is published.
#pragma once

#include <string>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::program {

// The tables that the operands hold, in their order; addresses are asked one after the other, with
// the bounds of a request for rates. Throws a Failure of kind "source", or of the request's. Main
// thread.
std::vector<RatesTable> tablesFromSources(const std::vector<std::string>& operands);

}  // namespace fexora::program
