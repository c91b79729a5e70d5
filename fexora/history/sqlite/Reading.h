// What is asked of the history's file. Each look-up lasts as long as its walk over the rows, and so
// does its hold on the file.
//
// All throw a SqliteFault; those that give a number give that of the rows that fail their checksum,
// of those from the sources that are asked for.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/history/RateHistory.h"
#include "fexora/history/sqlite/Database.h"

namespace fexora {

// Sets those of `rates`, one for each of `to`, that are there.
std::size_t ratesOn(Database& database, Day day, std::string_view from,
                    std::span<const std::string> to, const PastQuestion& question,
                    std::vector<std::optional<PastRate>>& rates);
std::size_t ratesBetween(Database& database, Day first, Day last, std::string_view from,
                         std::string_view to, const PastQuestion& question,
                         std::vector<DayRate>& rates);
std::size_t tablesOf(Database& database, Day day, std::vector<PublishedTable>& tables);
std::vector<std::string> replacedLines(Database& database, Day day);
void summarize(Database& database, HistorySummary& summary);

}  // namespace fexora
