#include "fexora/platform/files/PosixFiles.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <new>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/base/NoDestructor.h"

namespace fexora {
namespace {

std::error_code lastError() {
  return {errno, std::generic_category()};
}

// A system call, made again while it is interrupted, within bounds; its result.
template <class Call>
auto call(Call once) {
  auto result = once();
  for (int i = 0; i < limits::kInterruptedRetries && result < 0 && errno == EINTR; ++i) {
    result = once();
  }
  return result;
}

std::error_code outcome(int result) {
  return result == 0 ? std::error_code() : lastError();
}

FileResult<Files::Handle> open(const std::string& path, int flags, std::uint32_t mode = 0) {
  const int descriptor = call([&] { return ::open(path.c_str(), flags | O_CLOEXEC, mode); });
  if (descriptor < 0) return lastError();
  return descriptor;
}

FileResult<std::size_t> counted(ssize_t result) {
  if (result < 0) return lastError();
  return static_cast<std::size_t>(result);
}

FileStatus::Type typeOf(mode_t mode) {
  if (S_ISREG(mode)) return FileStatus::Type::file;
  if (S_ISDIR(mode)) return FileStatus::Type::folder;
  if (S_ISLNK(mode)) return FileStatus::Type::link;
  return FileStatus::Type::other;
}

FileStatus statusFrom(const struct stat& from) {
  constexpr std::int64_t kNanoseconds = 1'000'000'000;
  FileStatus status;
  status.type = typeOf(from.st_mode);
  status.size = static_cast<std::uint64_t>(from.st_size);
  status.device = from.st_dev;
  status.inode = from.st_ino;
  status.links = from.st_nlink;
  status.mode = from.st_mode & 07777U;
  status.owner = from.st_uid;
  status.group = from.st_gid;
  status.modified = from.st_mtim.tv_sec * kNanoseconds + from.st_mtim.tv_nsec;
  return status;
}

}  // namespace

Files::~Files() = default;

Files& Files::builtIn() {
  static NoDestructor<PosixFiles> files;
  return *files;
}

FileResult<Files::Handle> PosixFiles::openForReading(const std::string& path) {
  return open(path, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY);
}

FileResult<Files::Handle> PosixFiles::openFolder(const std::string& path) {
  return open(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
}

FileResult<Files::Handle> PosixFiles::createExclusive(const std::string& path, std::uint32_t mode) {
  const auto made = open(path, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
  // The creation mask may have taken bits away.
  if (made.ok() && call([&] { return ::fchmod(*made, mode); }) != 0) {
    const auto error = lastError();
    ::close(*made);
    ::unlink(path.c_str());
    return error;
  }
  return made;
}

std::error_code PosixFiles::close(Handle handle) {
  return outcome(::close(handle));
}

FileResult<std::size_t> PosixFiles::read(Handle handle, std::span<char> buffer) {
  return counted(call([&] { return ::read(handle, buffer.data(), buffer.size()); }));
}

FileResult<std::size_t> PosixFiles::write(Handle handle, std::string_view bytes) {
  return counted(call([&] { return ::write(handle, bytes.data(), bytes.size()); }));
}

std::error_code PosixFiles::flush(Handle handle) {
  return outcome(::fsync(handle));
}

std::error_code PosixFiles::lock(Handle handle) {
  return outcome(call([&] { return ::flock(handle, LOCK_EX | LOCK_NB); }));
}

FileResult<FileStatus> PosixFiles::status(Handle handle) {
  struct stat status {};
  if (call([&] { return ::fstat(handle, &status); }) != 0) return lastError();
  return statusFrom(status);
}

std::error_code PosixFiles::changeOwner(Handle handle, std::uint32_t owner, std::uint32_t group) {
  return outcome(call([&] { return ::fchown(handle, owner, group); }));
}

FileResult<FileStatus> PosixFiles::statusOf(const std::string& path) {
  struct stat status {};
  if (call([&] { return ::lstat(path.c_str(), &status); }) != 0) return lastError();
  return statusFrom(status);
}

std::error_code PosixFiles::rename(const std::string& from, const std::string& to) {
  return outcome(call([&] { return ::rename(from.c_str(), to.c_str()); }));
}

std::error_code PosixFiles::link(const std::string& from, const std::string& to) {
  return outcome(call([&] { return ::link(from.c_str(), to.c_str()); }));
}

std::error_code PosixFiles::remove(const std::string& path) {
  return outcome(call([&] { return ::unlink(path.c_str()); }));
}

std::error_code PosixFiles::makeFolder(const std::string& path, std::uint32_t mode) {
  return outcome(call([&] { return ::mkdir(path.c_str(), mode); }));
}

FileResult<std::vector<std::string>> PosixFiles::list(const std::string& folder) try {
  std::unique_ptr<DIR, int (*)(DIR*)> stream(nullptr, ::closedir);
  const auto open = [&] {
    stream.reset(::opendir(folder.c_str()));
    return stream != nullptr ? 0 : -1;
  };
  if (call(open) != 0) return lastError();
  const dirent* entry = nullptr;
  // The end and a failure look alike but for errno.
  const auto next = [&] {
    errno = 0;
    entry = ::readdir(stream.get());  // NOLINT(concurrency-mt-unsafe)
    return entry != nullptr || errno == 0 ? 0 : -1;
  };
  std::vector<std::string> names;
  while (names.size() < limits::kFolderNames) {
    if (call(next) != 0) return lastError();
    if (entry == nullptr) break;
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  return names;
} catch (const std::bad_alloc&) {
  return std::make_error_code(std::errc::not_enough_memory);
}

std::error_code PosixFiles::mayChange(const std::string& folder) {
  return outcome(
      call([&] { return ::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS); }));
}

std::uint32_t PosixFiles::user() {
  return ::geteuid();
}

}  // namespace fexora
