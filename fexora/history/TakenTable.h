// Rates that were taken, as the table that the history keeps of them: for a host that keeps each
// answer (RateManager::setTableTaken).
#pragma once

#include <string>

#include "fexora/history/PublishedTable.h"
#include "fexora/platform/base/Export.h"
#include "fexora/store/KeptRates.h"

namespace fexora {

// The figures as they were printed, else one dollar's in the shortest digits that are read as the
// rates again; what no table holds is left out (isTableCode, isFigure). Of the day on which they
// were published, and of the day of `otherwise`, in UTC, where that is not known. Any thread; may
// throw std::bad_alloc.
FEXORA_API PublishedTable takenTable(const RatesTable& rates, std::string source, Date otherwise);

}  // namespace fexora
