// Rates from files, addresses and named sources in any form that is published.
#pragma once

#include <string>
#include <vector>

#include "fexora/fexora.h"

#include "programs/sources/NamedSources.h"

namespace fexora::program {

// Whether the operand is an address and not a file.
bool isAddress(const std::string& operand);

// The text of a source, from the first of its addresses that gives one, with the bounds of a
// request for rates. Throws a Failure. Main thread.
std::string textFrom(const sources::SourceStep& step);

// The tables that the operands hold, in their order; addresses are asked one after the other, with
// the bounds of a request for rates. Throws a Failure of kind "source", or of the request's. Main
// thread.
std::vector<RatesTable> tablesFromSources(const std::vector<std::string>& operands);

}  // namespace fexora::program
