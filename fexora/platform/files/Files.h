// The file system as the library uses it: one operation per system call, so that a test can make
// each fail, or play the disk itself.
//
// An operation never waits for another process, never follows a symbolic link in the last part of a
// path, and reports failure as an error code (POSIX numbers, std::generic_category). An interrupted
// call it makes again itself, limits::kInterruptedRetries times at most, but not in flush() and
// close(): there, too, being interrupted is a failure. Paths are bytes.
// Any thread. Nothing throws but for memory that cannot be had.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "fexora/platform/base/Export.h"

namespace fexora {

// A value or the error that took its place.
template <class T>
class FileResult {
 public:
  FileResult(T value) : value_(std::move(value)) {}               // NOLINT
  FileResult(std::error_code error) : value_{}, error_(error) {}  // NOLINT
  bool ok() const noexcept { return !error_; }
  const std::error_code& error() const noexcept { return error_; }
  T& operator*() noexcept { return value_; }
  const T& operator*() const noexcept { return value_; }
  T* operator->() noexcept { return &value_; }
  const T* operator->() const noexcept { return &value_; }

 private:
  T value_;
  std::error_code error_;
};

struct FileStatus {
  enum class Type : std::uint8_t { file, folder, link, other };
  Type type = Type::other;
  std::uint64_t size = 0;
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::uint64_t links = 0;
  std::uint32_t mode = 0;     // permission bits
  std::uint32_t owner = 0;    // user id
  std::uint32_t group = 0;    // group id
  std::int64_t modified = 0;  // nanoseconds since 1970

  friend bool operator==(const FileStatus&, const FileStatus&) = default;
};

class FEXORA_API Files {
 public:
  using Handle = int;

  Files() = default;
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;
  virtual ~Files();

  // Opens without waiting, whatever lies there (a pipe without a writer included).
  virtual FileResult<Handle> openForReading(const std::string& path) = 0;
  virtual FileResult<Handle> openFolder(const std::string& path) = 0;
  // For reading and writing; fails with file_exists when the name is taken. Mode as given, whatever
  // the process's file creation mask.
  virtual FileResult<Handle> createExclusive(const std::string& path, std::uint32_t mode) = 0;
  virtual std::error_code close(Handle handle) = 0;

  // Zero at the end of the file.
  virtual FileResult<std::size_t> read(Handle handle, std::span<char> buffer) = 0;
  // May write less than asked.
  virtual FileResult<std::size_t> write(Handle handle, std::string_view bytes) = 0;
  // Content (or, for a folder, its names) has reached the disk when this succeeds.
  virtual std::error_code flush(Handle handle) = 0;
  // An exclusive lock that goes with the handle; resource_unavailable_try_again when another
  // handle holds it.
  virtual std::error_code lock(Handle handle) = 0;
  virtual FileResult<FileStatus> status(Handle handle) = 0;
  // Gives the file to this user and group.
  virtual std::error_code changeOwner(Handle handle, std::uint32_t owner, std::uint32_t group) = 0;

  virtual FileResult<FileStatus> statusOf(const std::string& path) = 0;
  virtual std::error_code rename(const std::string& from, const std::string& to) = 0;
  virtual std::error_code link(const std::string& from, const std::string& to) = 0;
  virtual std::error_code remove(const std::string& path) = 0;
  virtual std::error_code makeFolder(const std::string& path, std::uint32_t mode) = 0;
  // Names in a folder, without "." and "..", in no order; at most limits::kFolderNames of them.
  virtual FileResult<std::vector<std::string>> list(const std::string& folder) = 0;
  // An error when this process may not make and replace names in the folder.
  virtual std::error_code mayChange(const std::string& folder) = 0;
  // The user that this process acts as.
  virtual std::uint32_t user() = 0;

  // The library's own, and the one that the process uses: see Platform::process().
  static Files& builtIn();
  static Files& process();
};

}  // namespace fexora
