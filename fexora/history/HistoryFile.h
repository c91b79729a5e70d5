// Where in the container the history of rates lies.
#pragma once

#include <string_view>

#include "fexora/platform/files/ContainerFolder.h"

namespace fexora {

// A folder of its own: the file's journal comes and goes beside it at every change.
inline constexpr std::string_view kHistoryFolder = ".fexora-history";
inline constexpr std::string_view kHistoryFile = "rates.sqlite";
static_assert(kHistoryFolder.starts_with(kOwnPrefix));

}  // namespace fexora
