#include "fexora/platform/files/KeepUnderName.h"

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/files/AtomicWriter.h"
#include "fexora/platform/files/ReadFile.h"

namespace fexora {
namespace {

constexpr std::uint32_t kPermissions = 0777;

bool isNoLinkHere(const std::error_code& error) {
  return error == std::errc::operation_not_permitted ||
         error == std::errc::operation_not_supported || error == std::errc::not_supported ||
         error == std::errc::function_not_supported || error == std::errc::too_many_links;
}

// Two processes that copy to one name at one moment copy the same file, so no more than the look
// beforehand keeps a name from being taken twice.
std::error_code copy(Files& files, const std::string& path, const std::string& name) {
  const auto taken = files.statusOf(name);
  if (taken.ok()) return std::make_error_code(std::errc::file_exists);
  if (taken.error() != std::errc::no_such_file_or_directory) return taken.error();
  const auto whole = readWholeFile(files, path, limits::kStoreFileBytes);
  if (!whole.ok()) return whole.error();
  return replaceFile(files, name, whole->bytes, whole->status.mode & kPermissions).error;
}

}  // namespace

std::error_code keepUnderName(Files& files, const std::string& path, const std::string& name) {
  const auto error = files.link(path, name);
  return isNoLinkHere(error) ? copy(files, path, name) : error;
}

}  // namespace fexora
