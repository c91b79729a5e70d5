// Fills the history of rates.
#pragma once

#include "fexora/fexora.h"

#include "programs/fexora/CommandLine.h"

namespace fexora::program {

// From the sources that `line` names, all of them or none: "ecb", "ecb-90", files, - and addresses.
// Prints what came of it. Throws a Failure.
void importHistory(const CommandLine& line, StoreManager& store);

}  // namespace fexora::program
