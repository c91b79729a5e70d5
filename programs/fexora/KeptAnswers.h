// Rates that were taken are kept for later, as the tables that they were.
//
// What cannot be kept is a warning: the rates are in the store all the same.
#pragma once

#include <string>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::program {

// Those of one source that has a name, "service" included; and the rates that come with the
// program.
void keepTables(const std::string& name, const std::vector<RatesTable>& tables);
// Those of each operand: a name, an address, a file or -.
void keepSources(const std::vector<std::string>& operands, const std::vector<RatesTable>& tables);

}  // namespace fexora::program
