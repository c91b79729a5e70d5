#include "fexora/platform/files/ReadFile.h"

#include <algorithm>
#include <new>

#include "fexora/platform/base/BringIn.h"

namespace fexora {
namespace {

std::error_code rejection(FileStatus::Type type) {
  switch (type) {
    case FileStatus::Type::file:
      return {};
    case FileStatus::Type::folder:
      return std::make_error_code(std::errc::is_a_directory);
    case FileStatus::Type::link:
      return std::make_error_code(std::errc::too_many_symbolic_link_levels);
    case FileStatus::Type::other:
      return std::make_error_code(std::errc::operation_not_supported);
  }
  return std::make_error_code(std::errc::operation_not_supported);
}

std::error_code readAll(Files& files, Files::Handle handle, std::size_t limit, std::string& bytes) {
  // One byte beyond the size shows the end of the file in the last read but one.
  constexpr std::size_t kStep = 65536;
  std::size_t got = 0;
  bytes.resize(std::max<std::size_t>(bytes.size(), 1));
  for (;;) {
    if (got == bytes.size()) {
      if (got > limit) return std::make_error_code(std::errc::file_too_large);
      bytes.resize(std::min(got + kStep, limit + 1));
    }
    const auto count = files.read(handle, std::span(bytes).subspan(got));
    if (!count.ok()) return count.error();
    if (*count == 0) break;
    got += *count;
  }
  if (got > limit) return std::make_error_code(std::errc::file_too_large);
  bytes.resize(got);
  return {};
}

std::error_code readInto(Files& files, Files::Handle handle, std::size_t limit, WholeFile& whole) {
  const auto status = files.status(handle);
  if (!status.ok()) return status.error();
  if (const auto error = rejection(status->type)) return error;
  if (status->size > limit) return std::make_error_code(std::errc::file_too_large);
  whole.status = *status;
  try {
    const std::size_t size = static_cast<std::size_t>(status->size) + 1;
    whole.bytes.reserve(size);
    bringIn(whole.bytes.data(), size);
    whole.bytes.resize(size);
    return readAll(files, handle, limit, whole.bytes);
  } catch (const std::bad_alloc&) {
    return std::make_error_code(std::errc::not_enough_memory);
  }
}

}  // namespace

FileResult<WholeFile> readWholeFile(Files& files, const std::string& path, std::size_t limit) {
  // Asked before the opening too, since opening a device can already do something.
  const auto before = files.statusOf(path);
  if (!before.ok()) return before.error();
  if (const auto error = rejection(before->type)) return error;
  const auto handle = files.openForReading(path);
  if (!handle.ok()) return handle.error();
  WholeFile whole;
  const auto error = readInto(files, *handle, limit, whole);
  files.close(*handle);
  if (error) return error;
  return whole;
}

}  // namespace fexora
