// What became of currencies that are no more.
#pragma once

#include <optional>
#include <string>

#include "fexora/fexora.h"

namespace fexora::program {

// "DEM was replaced by EUR on 2002-01-01 (1 EUR = 1.95583 DEM)"; nothing for one that is in use.
std::optional<std::string> withdrawnNotice(const Currency& currency);

}  // namespace fexora::program
