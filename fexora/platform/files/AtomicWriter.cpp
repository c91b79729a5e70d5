#include "fexora/platform/files/AtomicWriter.h"

#include <array>
#include <atomic>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <utility>

#include <sys/random.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/files/ContainerFolder.h"

namespace fexora {
namespace {

constexpr std::string_view kTemporaryPrefix = ".fexora-save-";
static_assert(kTemporaryPrefix.starts_with(kOwnPrefix));

// Where the system has no random number yet, the time and a place in memory, which a machine that
// lays processes out at random makes hard to tell in advance.
std::uint64_t firstNumber() {
  std::uint64_t number = 0;
  if (::getrandom(&number, sizeof number, GRND_NONBLOCK) == sizeof number) return number;
  const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
  return static_cast<std::uint64_t>(ticks) * 0x9e3779b97f4a7c15 ^
         static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&number));
}

// No two writers try the same names in the same order.
std::string temporaryName() {
  static std::atomic<std::uint64_t> next{firstNumber()};
  std::array<char, 16> hex{};
  const auto end = std::to_chars(hex.data(), hex.data() + hex.size(), ++next, 16).ptr;
  return std::string(kTemporaryPrefix).append(hex.data(), end);
}

class Replacement {
 public:
  Replacement(Files& files, const std::string& path)
      : files_(files), path_(path), folder_(folderOf(path)), folderToFlush_(folder_ + "/.") {}
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  // However the replacement ended: no temporary is left, and it goes while it is still locked.
  ~Replacement() {
    if (hasTemporary_) removeTemporary();
    close(handle_);
    close(lock_);
  }

  // With `replaced`, its owner and group are kept.
  ReplaceOutcome run(std::string_view bytes, std::uint32_t mode,
                     const std::function<std::error_code()>& beforeRename,
                     const FileStatus* replaced = nullptr) {
    if (const auto error = makeTemporary(mode)) return failed(error, "create a temporary");
    if (replaced != nullptr) {
      if (const auto error = keepOwner(*replaced)) return failed(error, "keep owner and group");
    }
    if (const auto error = write(bytes)) return failed(error, "write");
    // A flush that failed is not tried again: the pages that it lost are marked clean by then.
    if (const auto error = files_.flush(handle_)) return failed(error, "flush");
    const auto status = files_.status(handle_);
    if (!status.ok()) return failed(status.error(), "read the status");
    // Closed under its own name: closed after the rename, the file would wake every watcher of the
    // folder a second time. An interrupted close has closed, and all is flushed by now.
    const auto closing = close(handle_);
    if (closing && closing != std::errc::interrupted) return failed(closing, "close");
    if (beforeRename) {
      if (const auto error = beforeRename()) return failed(error, "keep aside");
    }
    if (const auto error = files_.rename(temporary_, path_)) {
      return failed(error, "rename");
    }
    hasTemporary_ = false;
    return {{}, "", flushFolder(), *status};
  }

 private:
  static ReplaceOutcome failed(std::error_code error, const char* step) {
    return {error, step, {}, {}};
  }

  std::error_code makeTemporary(std::uint32_t mode) {
    auto error = std::make_error_code(std::errc::file_exists);
    for (int i = 0; i < limits::kTemporaryNames && error == std::errc::file_exists; ++i) {
      temporary_ = folder_ + "/" + temporaryName();
      const auto made = files_.createExclusive(temporary_, mode);
      error = made.error();
      if (!made.ok()) continue;
      handle_ = *made;
      hasTemporary_ = true;
      error = claim();
      if (!error) return {};
      removeTemporary();
      close(handle_);
      close(lock_);
    }
    return error;
  }

  // Locks the new temporary, through a handle that outlives the one for writing; file_exists when
  // somebody who clears dead ones was faster.
  std::error_code claim() {
    const auto taken = std::make_error_code(std::errc::file_exists);
    const auto opened = files_.openForReading(temporary_);
    if (!opened.ok()) {
      return opened.error() == std::errc::no_such_file_or_directory ? taken : opened.error();
    }
    lock_ = *opened;
    if (const auto error = files_.lock(lock_)) {
      return error == std::errc::resource_unavailable_try_again ? taken : error;
    }
    const auto status = files_.status(lock_);
    if (!status.ok()) return status.error();
    return status->links == 0 ? taken : std::error_code();
  }

  void removeTemporary() {
    hasTemporary_ = false;
    files_.remove(temporary_);
  }

  std::error_code close(Files::Handle& handle) {
    if (handle < 0) return {};
    return files_.close(std::exchange(handle, -1));
  }

  std::error_code write(std::string_view bytes) {
    while (!bytes.empty()) {
      const auto count = files_.write(handle_, bytes);
      if (!count.ok()) return count.error();
      if (*count == 0) return std::make_error_code(std::errc::io_error);
      bytes.remove_prefix(*count);
    }
    return {};
  }

  // Asks for no right where nothing is to be changed.
  std::error_code keepOwner(const FileStatus& replaced) {
    const auto made = files_.status(handle_);
    if (!made.ok()) return made.error();
    if (made->owner == replaced.owner && made->group == replaced.group) return {};
    return files_.changeOwner(handle_, replaced.owner, replaced.group);
  }

  std::error_code flushFolder() {
    const auto folder = files_.openFolder(folderToFlush_);
    if (!folder.ok()) return folder.error();
    const auto error = files_.flush(*folder);
    files_.close(*folder);
    return error;
  }

  Files& files_;
  const std::string& path_;
  // Made before anything is on the disk, so that no shortage of memory can come in between.
  const std::string folder_;
  const std::string folderToFlush_;
  std::string temporary_;
  bool hasTemporary_ = false;
  Files::Handle handle_ = -1;  // for writing
  Files::Handle lock_ = -1;    // holds the lock until after the rename
};

void removeIfDead(Files& files, const std::string& path) {
  const auto handle = files.openForReading(path);
  if (!handle.ok()) return;
  // The name may belong to another file by now; only what was locked is removed.
  if (!files.lock(*handle)) {
    const auto locked = files.status(*handle);
    const auto named = files.statusOf(path);
    if (locked.ok() && named.ok() && locked->inode == named->inode &&
        locked->device == named->device) {
      files.remove(path);
    }
  }
  files.close(*handle);
}

}  // namespace

ReplaceOutcome replaceFile(Files& files, const std::string& path, std::string_view bytes,
                           std::uint32_t mode,
                           const std::function<std::error_code()>& beforeRename) {
  return Replacement(files, path).run(bytes, mode, beforeRename);
}

ReplaceOutcome replaceFile(Files& files, const std::string& path, std::string_view bytes,
                           const FileStatus& replaced) {
  return Replacement(files, path).run(bytes, replaced.mode, {}, &replaced);
}

void removeDeadTemporaries(Files& files, const std::string& folder) {
  const auto names = files.list(folder);
  if (!names.ok()) return;
  for (const std::string& name : *names) {
    if (name.starts_with(kTemporaryPrefix)) {
      removeIfDead(files, std::string(folder).append("/").append(name));
    }
  }
}

std::string folderOf(const std::string& path) {
  const auto slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

}  // namespace fexora
