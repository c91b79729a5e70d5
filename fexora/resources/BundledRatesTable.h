// The snapshot of rates that comes with the library, as a compiled table.
#pragma once

#include <span>

#include "fexora/platform/values/Date.h"
#include "fexora/resources/TableCode.h"

namespace fexora {

struct BundledRate {
  TableCode code;  // upper case
  double rate;     // units that one US dollar buys; finite, above 0
};

// In the order of the snapshot, the dollar's own 1 included; see data/PROVENANCE.md.
std::span<const BundledRate> bundledRatesTable() noexcept;

// The midnight (UTC) that began the snapshot's day.
Date bundledRatesDate() noexcept;

}  // namespace fexora
