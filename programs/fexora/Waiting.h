// A request that a command waits for, and what its failure is called.
#pragma once

#include "fexora/fexora.h"

#include "programs/sources/NamedSources.h"

namespace fexora::program {

// A stable word for programs.
const char* kindOf(const ResponseError& error);

// Runs the loop until `ended`, with the first address and what has come shown to a person who
// waits. Throws a Failure when there is no loop.
void waitFor(const sources::SourceStep& step, const Transfer::Progress& received,
             const bool& ended);

}  // namespace fexora::program
