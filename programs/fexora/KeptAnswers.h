// Rates that were taken are kept for later, as the tables that they were.
//
// What cannot be kept is a warning: the rates are in the store all the same.
#pragma once

#include <string>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::program {

// And the rates that come with the program. `names` as in TakenTables.h.
void keepTables(const std::vector<std::string>& names, const std::vector<RatesTable>& tables);

}  // namespace fexora::program
