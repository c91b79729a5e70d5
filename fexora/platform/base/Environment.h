// The process's environment, as far as it may be trusted.
#pragma once

#include <optional>
#include <string>

#include "fexora/platform/base/Export.h"

namespace fexora {

// The variable's value; nothing when it is unset or empty, or when the process runs with more
// rights than its user has (set-user-id and the like), whose environment decides nothing here.
FEXORA_API std::optional<std::string> environment(const char* variable);

// Whether this is such a process: for libraries underneath that read the environment themselves.
FEXORA_API bool hasMoreRightsThanItsUser() noexcept;

}  // namespace fexora
