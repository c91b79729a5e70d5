// What a damaged history still holds.
#pragma once

#include <cstddef>
#include <string>

#include "fexora/history/sqlite/Database.h"

namespace fexora {

// Copies the rows that have their checksum out of the damaged file, as far as it can be read from
// either end, in a transaction of the caller's. How many tables that were; none where the file is
// so damaged that nothing can be asked. Throws a SqliteFault of `into` alone.
std::size_t takeTablesOver(const std::string& damagedFile, Database& into);

}  // namespace fexora
