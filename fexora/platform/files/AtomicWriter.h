// Replaces a file whole: readers see the old content or the new, never a part, also after a crash.
//
// The new content goes to a temporary beside the file, which is flushed and then renamed over it;
// then the folder is flushed. Until the rename the temporary is locked, so that whoever clears dead
// ones away can tell a live one. No call waits for another process.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <system_error>

#include "fexora/platform/files/Files.h"

namespace fexora {

struct ReplaceOutcome {
  std::error_code error;  // set: the old file is whole and no temporary is left
  const char* step = "";  // what failed, as in "write"
  std::error_code doubt;  // set without `error`: the new file stands, but may not survive a crash
  FileStatus status;      // of the new file
};

// `path` names the file, in a folder that exists; the new one has mode `mode`. `beforeRename` is
// called with everything flushed; an error from it ends the replacement as one of step "keep
// aside". May throw std::bad_alloc; that, too, leaves the old file whole and no temporary.
FEXORA_API ReplaceOutcome replaceFile(Files& files, const std::string& path, std::string_view bytes,
                                      std::uint32_t mode,
                                      const std::function<std::error_code()>& beforeRename = {});

// As above, with the mode, the owner and the group of the file that is replaced; an error of step
// "keep owner and group" where this process may not give them.
FEXORA_API ReplaceOutcome replaceFile(Files& files, const std::string& path, std::string_view bytes,
                                      const FileStatus& replaced);

// Removes the temporaries of writers that are gone. What is locked, and so alive, stays. May throw
// std::bad_alloc.
FEXORA_API void removeDeadTemporaries(Files& files, const std::string& folder);

// The folder part of a file's path.
FEXORA_API std::string folderOf(const std::string& path);

}  // namespace fexora
