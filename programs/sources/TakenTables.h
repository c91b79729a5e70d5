// Rates that were taken, as the tables that the history keeps of them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::sources {

// Of sources of any kind, and of the rates that come with the program. `names` has one of each
// table, or one of them all, and is never empty: a name, "service" included, an address, a file or
// -. Figures as they were printed; what no table takes is left out, and so is a table of an unknown
// day: nothing can be said of it later.
std::vector<PublishedTable> takenTables(const std::vector<std::string>& names,
                                        const std::vector<RatesTable>& tables);

// The name under which the history keeps what comes from a source that is called so: "usd" of
// "exchange-api"; most are called the same.
std::string nameInHistory(std::string_view name);

}  // namespace fexora::sources
