// Gives what lies at a path a second name, so that it is still there once the first is replaced.
#pragma once

#include <string>
#include <system_error>

#include "fexora/platform/files/Files.h"

namespace fexora {

// By a hard link; where there are none (another file system, or a file that this user may not link
// to), by a copy with the same permission bits, flushed, never seen in part: of a regular file of
// at most limits::kStoreFileBytes that may be read. `name` is in the same folder; file_exists when
// it is taken. Otherwise why neither is possible. May throw std::bad_alloc.
FEXORA_API std::error_code keepUnderName(Files& files, const std::string& path,
                                         const std::string& name);

}  // namespace fexora
