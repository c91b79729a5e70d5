// Reads a regular file whole, within a bound.
#pragma once

#include <cstddef>
#include <string>

#include "fexora/platform/files/Files.h"

namespace fexora {

struct WholeFile {
  std::string bytes;
  FileStatus status;  // of the file that was read, not of what may lie at the path by now
};

// Errors: too_many_symbolic_link_levels for a symbolic link, is_a_directory for a folder,
// operation_not_supported for anything else that is no file, file_too_large beyond `limit` bytes
// (also when the file grows meanwhile), or what the system reported. Never waits for a writer.
FEXORA_API FileResult<WholeFile> readWholeFile(Files& files, const std::string& path,
                                               std::size_t limit);

}  // namespace fexora
