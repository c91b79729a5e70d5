#include "fexora/platform/files/ContainerFolder.h"

#include <array>
#include <climits>
#include <mutex>
#include <utility>

#include <unistd.h>

#include "fexora/platform/base/Environment.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/files/PrivateFolder.h"

namespace fexora {
namespace {

constexpr std::uint32_t kOthersWrite = 0022;
constexpr const char* kNamed = "FEXORA_CONTAINER";

// The one that was named last, with what it was then: a change of the working directory later does
// not lead elsewhere.
struct NamedFolder {
  std::mutex mutex;
  std::string given;
  std::string path;
};

std::string madeAbsolute(std::string given) {
  static NoDestructor<NamedFolder> last;
  const std::lock_guard lock(last->mutex);
  if (last->given == given) return last->path;
  std::array<char, PATH_MAX> folder{};
  // Without a working directory the path leads nowhere, and that is said.
  if (::getcwd(folder.data(), folder.size()) == nullptr) return given;
  std::string path = std::string(folder.data()).append("/").append(given);
  last->given = std::move(given);
  return last->path = std::move(path);
}

ContainerFolder unusable(const std::string& path, const std::string& why) {
  return {"", "the container folder " + path + " cannot be used: " + why};
}

// Whether a folder of somebody else's is meant to be shared.
bool isShared(Files& files, const std::string& path, const FileStatus& status) {
  if ((status.mode & kOthersWrite) == 0) return false;
  const auto refused = files.mayChange(path);
  // Who only reads need not be able to write.
  return !refused || refused == std::errc::read_only_file_system;
}

ContainerFolder usable(Files& files, std::string path, bool isNamed) {
  // With the dot, a link to a folder counts as the folder: where it lies is the user's choice.
  auto status = files.statusOf(path + "/.");
  if (!status.ok() && status.error() == std::errc::no_such_file_or_directory) {
    const auto made = makePrivateFolder(files, path);
    if (made == std::errc::read_only_file_system) {
      std::string why = "the container folder " + path + " is not there: " + made.message();
      return {std::move(path), std::move(why)};
    }
    if (made && made != std::errc::file_exists) return unusable(path, made.message());
    status = files.statusOf(path + "/.");
  }
  if (!status.ok()) return unusable(path, status.error().message());
  const bool isOurs = status->owner == files.user();
  if (!isOurs && !(isNamed && isShared(files, path, *status))) {
    return unusable(path, "it belongs to another user");
  }
  std::string warning;
  if (!isOurs) {
    warning =
        "the container folder " + path + " belongs to another user and may be written by others";
  } else if ((status->mode & kOthersWrite) != 0) {
    warning = "the container folder " + path + " may be written by other users";
  }
  return {std::move(path), std::move(warning)};
}

}  // namespace

std::string containerPath(std::string_view groupIdentifier) {
  if (auto container = environment(kNamed)) {
    return container->starts_with('/') ? *std::move(container)
                                       : madeAbsolute(*std::move(container));
  }
  auto data = environment("XDG_DATA_HOME");
  // A relative path there counts as none, by the rule of the XDG base directories.
  if (!data || !data->starts_with('/')) {
    data = environment("HOME");
    if (!data) return {};
    data->append("/.local/share");
  }
  return data->append("/").append(groupIdentifier);
}

ContainerFolder containerFolder(Files& files, std::string_view groupIdentifier) {
  std::string path = containerPath(groupIdentifier);
  if (path.empty()) {
    return {"",
            "there is no container folder: none of FEXORA_CONTAINER, XDG_DATA_HOME and HOME "
            "is set"};
  }
  return usable(files, std::move(path), environment(kNamed).has_value());
}

ContainerFolder namedFolder(Files& files, std::string path) {
  if (!path.starts_with('/')) return unusable(path, "expected an absolute path");
  return usable(files, std::move(path), true);
}

}  // namespace fexora
