// Rates that were taken, as the tables that the history keeps of them.
#pragma once

#include <string>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::sources {

// Of one source that has a name, "service" included, and of the rates that come with the program.
// Figures as they were printed; what no table takes is left out. One of an unknown day is of the
// day of `now`, the moment at which they came.
std::vector<PublishedTable> takenTables(const std::string& name,
                                        const std::vector<RatesTable>& tables, Date now);
// The same of sources of any kind, one for each table: a name, an address, a file or -. One of an
// unknown day is left out: nothing can be said of it later.
std::vector<PublishedTable> takenTables(const std::vector<std::string>& operands,
                                        const std::vector<RatesTable>& tables);

}  // namespace fexora::sources
