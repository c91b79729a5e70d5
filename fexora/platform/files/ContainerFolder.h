// The folder that the processes of one application group share.
#pragma once

#include <string>
#include <string_view>

#include "fexora/platform/files/Files.h"

namespace fexora {

// Every name of ours in the container but the store file's begins so, and the folder watch ignores
// it: one save then wakes the other process once.
inline constexpr std::string_view kOwnPrefix = ".fexora-";

struct ContainerFolder {
  std::string path;     // empty when there is none
  std::string problem;  // one line: why there is none, or what to know about the one there is
};

// Where that folder lies, whether or not it is there; empty when no variable says so. A relative
// path is made absolute against the working directory when it is first met, and stays that. Any
// thread.
FEXORA_API std::string containerPath(std::string_view groupIdentifier);

// $FEXORA_CONTAINER; else the folder named `groupIdentifier` in $XDG_DATA_HOME (when absolute);
// else in .local/share under $HOME. Made with mode 0700 when missing, its parents too. There is
// none when no variable says where, when it cannot be made, when it is not a folder, or when it
// belongs to another user; one that others may write is used, and `problem` says so. Another user's
// folder is used, too, when FEXORA_CONTAINER names it and both others and this user may write it.
// Where `files` refuses to make a missing folder because nothing may be written, the path is given
// all the same, with a problem: there may be one later.
FEXORA_API ContainerFolder containerFolder(Files& files, std::string_view groupIdentifier);
// The same for a folder that the caller names by its absolute path; he counts as who sets
// FEXORA_CONTAINER.
FEXORA_API ContainerFolder namedFolder(Files& files, std::string path);

}  // namespace fexora
