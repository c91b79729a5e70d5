// Makes a folder that only its user can look into.
#pragma once

#include <string>
#include <system_error>

#include "fexora/platform/files/Files.h"

namespace fexora {

// Makes the folder and what is missing above it, each with mode 0700 and its name flushed to the
// disk. file_exists when something of that name is there already, whatever it is. May throw
// std::bad_alloc.
FEXORA_API std::error_code makePrivateFolder(Files& files, const std::string& path);

}  // namespace fexora
