#include "fexora/platform/files/ContainerFolder.h"

#include "fexora/platform/files/PrivateFolder.h"
#include "fexora/platform/files/Retry.h"
#include "fexora/platform/foundation/Environment.h"

namespace fexora {
namespace {

constexpr std::uint32_t kOthersWrite = 0022;

ContainerFolder unusable(const std::string& path, const std::string& why) {
  return {"", "the container folder " + path + " cannot be used: " + why};
}

}  // namespace

std::string containerPath(std::string_view groupIdentifier) {
  if (auto container = environment("FEXORA_CONTAINER")) return *std::move(container);
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
  // With the dot, a link to a folder counts as the folder: where it lies is the user's choice.
  const auto look = [&] { return files.statusOf(path + "/."); };
  auto status = retryInterrupted(look);
  if (!status.ok() && status.error() == std::errc::no_such_file_or_directory) {
    const auto made = makePrivateFolder(files, path);
    if (made && made != std::errc::file_exists) return unusable(path, made.message());
    status = retryInterrupted(look);
  }
  if (!status.ok()) return unusable(path, status.error().message());
  if (status->owner != files.user()) return unusable(path, "it belongs to another user");
  std::string warning;
  if ((status->mode & kOthersWrite) != 0) {
    warning = "the container folder " + path + " may be written by other users";
  }
  return {std::move(path), std::move(warning)};
}

}  // namespace fexora
