#include "fexora/platform/files/PrivateFolder.h"

namespace fexora {
namespace {

constexpr std::uint32_t kPrivate = 0700;

// What is saved in a folder is there after a crash only if the folder's own name is. A folder above
// that may not be read cannot be flushed; then it is left to the system.
void flushFolder(Files& files, const std::string& path) {
  const auto folder = files.openFolder(path + "/.");
  if (!folder.ok()) return;
  files.flush(*folder);
  files.close(*folder);
}

std::error_code make(Files& files, const std::string& path, const std::string& parent) {
  const auto error = files.makeFolder(path, kPrivate);
  if (!error) flushFolder(files, parent);
  return error;
}

}  // namespace

std::error_code makePrivateFolder(Files& files, const std::string& path) {
  const auto slash = path.find_last_not_of('/');
  const auto last = path.rfind('/', slash);
  const bool hasParent = slash != std::string::npos && last != std::string::npos;
  const std::string parent = !hasParent ? "." : path.substr(0, last);
  const std::error_code error = make(files, path, parent);
  if (error != std::errc::no_such_file_or_directory || !hasParent || last == 0) return error;
  const std::error_code above = makePrivateFolder(files, parent);
  if (above && above != std::errc::file_exists) return above;
  return make(files, path, parent);
}

}  // namespace fexora
