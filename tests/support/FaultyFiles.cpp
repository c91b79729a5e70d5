#include "tests/support/FaultyFiles.h"

#include <algorithm>
#include <iterator>

namespace fexora::test {

const char* nameOf(FaultyFiles::Operation operation) {
  static constexpr const char* kNames[] = {
      "openForReading", "openFolder", "createExclusive", "close",       "read",     "write",
      "flush",          "lock",       "status",          "changeOwner", "statusOf", "rename",
      "link",           "remove",     "makeFolder",      "list"};
  return kNames[static_cast<std::size_t>(operation)];
}

void FaultyFiles::failCall(std::size_t number, int error, bool fromThenOn) {
  calls_.clear();
  always_.clear();
  first_ = number;
  error_ = error;
  fromThenOn_ = fromThenOn;
}

void FaultyFiles::failAll(Operation operation, int error) {
  calls_.clear();
  always_[operation] = error;
}

void FaultyFiles::heal() {
  failCall(0, 0, false);
}

std::size_t FaultyFiles::count(Operation operation) const {
  return static_cast<std::size_t>(
      std::count_if(calls_.begin(), calls_.end(),
                    [operation](const Call& call) { return call.operation == operation; }));
}

std::error_code FaultyFiles::enter(Operation operation, const std::string& path) {
  const std::size_t number = calls_.size();
  int error = 0;
  if (const auto at = always_.find(operation); at != always_.end()) error = at->second;
  if (error_ != 0 && (number == first_ || (fromThenOn_ && number > first_))) error = error_;
  calls_.push_back({operation, path, error != 0});
  return {error, std::generic_category()};
}

FileResult<Files::Handle> FaultyFiles::keep(FileResult<Handle> handle, const std::string& path) {
  if (handle.ok()) handles_[*handle] = path;
  return handle;
}

FileResult<Files::Handle> FaultyFiles::openForReading(const std::string& path) {
  if (const auto error = enter(Operation::openForReading, path)) return error;
  return keep(below_.openForReading(path), path);
}

FileResult<Files::Handle> FaultyFiles::openFolder(const std::string& path) {
  if (const auto error = enter(Operation::openFolder, path)) return error;
  return keep(below_.openFolder(path), path);
}

FileResult<Files::Handle> FaultyFiles::createExclusive(const std::string& path,
                                                       std::uint32_t mode) {
  if (const auto error = enter(Operation::createExclusive, path)) return error;
  return keep(below_.createExclusive(path, mode), path);
}

std::error_code FaultyFiles::close(Handle handle) {
  const auto error = enter(Operation::close, handles_[handle]);
  handles_.erase(handle);
  const auto real = below_.close(handle);
  return error ? error : real;
}

FileResult<std::size_t> FaultyFiles::read(Handle handle, std::span<char> buffer) {
  if (const auto error = enter(Operation::read, handles_[handle])) return error;
  return below_.read(handle, buffer);
}

FileResult<std::size_t> FaultyFiles::write(Handle handle, std::string_view bytes) {
  if (const auto error = enter(Operation::write, handles_[handle])) return error;
  return below_.write(handle, bytes);
}

std::error_code FaultyFiles::flush(Handle handle) {
  if (const auto error = enter(Operation::flush, handles_[handle])) return error;
  return below_.flush(handle);
}

std::error_code FaultyFiles::lock(Handle handle) {
  if (const auto error = enter(Operation::lock, handles_[handle])) return error;
  return below_.lock(handle);
}

FileResult<FileStatus> FaultyFiles::status(Handle handle) {
  if (const auto error = enter(Operation::status, handles_[handle])) return error;
  return below_.status(handle);
}

std::error_code FaultyFiles::changeOwner(Handle handle, std::uint32_t owner, std::uint32_t group) {
  if (const auto error = enter(Operation::changeOwner, handles_[handle])) return error;
  return below_.changeOwner(handle, owner, group);
}

FileResult<FileStatus> FaultyFiles::statusOf(const std::string& path) {
  if (const auto error = enter(Operation::statusOf, path)) return error;
  return below_.statusOf(path);
}

std::error_code FaultyFiles::rename(const std::string& from, const std::string& to) {
  if (const auto error = enter(Operation::rename, from)) return error;
  return below_.rename(from, to);
}

std::error_code FaultyFiles::link(const std::string& from, const std::string& to) {
  if (const auto error = enter(Operation::link, from)) return error;
  return below_.link(from, to);
}

std::error_code FaultyFiles::remove(const std::string& path) {
  if (const auto error = enter(Operation::remove, path)) return error;
  return below_.remove(path);
}

std::error_code FaultyFiles::makeFolder(const std::string& path, std::uint32_t mode) {
  if (const auto error = enter(Operation::makeFolder, path)) return error;
  return below_.makeFolder(path, mode);
}

FileResult<std::vector<std::string>> FaultyFiles::list(const std::string& folder) {
  if (const auto error = enter(Operation::list, folder)) return error;
  return below_.list(folder);
}

}  // namespace fexora::test
