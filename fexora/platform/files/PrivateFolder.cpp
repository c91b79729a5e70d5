#include "fexora/platform/files/PrivateFolder.h"

namespace fexora {
namespace {

constexpr std::uint32_t kPrivate = 0700;

}  // namespace

std::error_code makePrivateFolder(Files& files, const std::string& path) {
  const std::error_code error = files.makeFolder(path, kPrivate);
  if (error != std::errc::no_such_file_or_directory) return error;
  const auto slash = path.find_last_not_of('/');
  const auto parent = path.rfind('/', slash);
  if (slash == std::string::npos || parent == std::string::npos || parent == 0) return error;
  const std::error_code above = makePrivateFolder(files, path.substr(0, parent));
  if (above && above != std::errc::file_exists) return above;
  return files.makeFolder(path, kPrivate);
}

}  // namespace fexora
