// The form in which the library runs: shared, with its modules and resources in files beside it, or
// static, with everything linked in. Each form is one source file, chosen by the build.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

// The folder of the shared library's file, or nothing in the static form. Any thread.
std::optional<std::string> libraryFolder();

// The address of `entry` in the module `name` ("loop", "text", "xml", "net" or "history"; in the
// shared form also one that a program has put beside these), opening it on first need; null with a
// reason in `reason` when it cannot be had. A module is never closed. Any thread.
FEXORA_API void* moduleEntry(std::string_view name, const char* entry, std::string& reason);

}  // namespace fexora
