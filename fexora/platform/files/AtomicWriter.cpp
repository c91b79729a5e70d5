#include "fexora/platform/files/AtomicWriter.h"

#include <array>
#include <atomic>
#include <charconv>
#include <random>
#include <utility>

#include "fexora/platform/files/ContainerFolder.h"
#include "fexora/platform/files/Retry.h"

namespace fexora {
namespace {

constexpr std::string_view kTemporaryPrefix = ".fexora-save-";
static_assert(kTemporaryPrefix.starts_with(kOwnPrefix));

// No two writers try the same names in the same order.
std::string temporaryName() {
  static std::atomic<std::uint64_t> next{(std::uint64_t{std::random_device()()} << 32U) |
                                         std::random_device()()};
  std::array<char, 16> hex{};
  const auto end = std::to_chars(hex.data(), hex.data() + hex.size(), ++next, 16).ptr;
  return std::string(kTemporaryPrefix).append(hex.data(), end);
}

class Replacement {
 public:
  Replacement(Files& files, const std::string& path) : files_(files), path_(path) {}
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement() {
    close(handle_);
    close(lock_);
  }

  ReplaceOutcome run(std::string_view bytes, std::uint32_t mode,
                     const std::function<std::error_code()>& beforeRename) {
    if (const auto error = makeTemporary(mode)) return {error, "create a temporary", {}, {}};
    if (const auto error = write(bytes)) return giveUp(error, "write");
    // A flush that failed is not tried again: the pages that it lost are marked clean by then.
    if (const auto error = files_.flush(handle_)) return giveUp(error, "flush");
    const auto status = files_.status(handle_);
    if (!status.ok()) return giveUp(status.error(), "read the status");
    // Closed under its own name: closed after the rename, the file would wake every watcher of the
    // folder a second time.
    if (const auto error = close(handle_)) return giveUp(error, "close");
    if (beforeRename) {
      if (const auto error = beforeRename()) return giveUp(error, "keep aside");
    }
    if (const auto error = retryInterrupted([&] { return files_.rename(temporary_, path_); })) {
      return giveUp(error, "rename");
    }
    return {{}, "", flushFolder(), *status};
  }

 private:
  std::error_code makeTemporary(std::uint32_t mode) {
    const std::string folder = folderOf(path_);
    auto error = std::make_error_code(std::errc::file_exists);
    for (int i = 0; i < limits::kTemporaryNames && error == std::errc::file_exists; ++i) {
      temporary_ = folder + "/" + temporaryName();
      const auto made = retryInterrupted([&] { return files_.createExclusive(temporary_, mode); });
      error = made.error();
      if (!made.ok()) continue;
      handle_ = *made;
      error = claim();
      if (!error) return {};
      files_.remove(temporary_);
      close(handle_);
      close(lock_);
    }
    return error;
  }

  // Locks the new temporary, through a handle that outlives the one for writing; file_exists when
  // somebody who clears dead ones was faster.
  std::error_code claim() {
    const auto taken = std::make_error_code(std::errc::file_exists);
    const auto opened = retryInterrupted([&] { return files_.openForReading(temporary_); });
    if (!opened.ok()) {
      return opened.error() == std::errc::no_such_file_or_directory ? taken : opened.error();
    }
    lock_ = *opened;
    if (const auto error = retryInterrupted([&] { return files_.lock(lock_); })) {
      return error == std::errc::resource_unavailable_try_again ? taken : error;
    }
    const auto status = files_.status(lock_);
    if (!status.ok()) return status.error();
    return status->links == 0 ? taken : std::error_code();
  }

  std::error_code close(Files::Handle& handle) {
    if (handle < 0) return {};
    return files_.close(std::exchange(handle, -1));
  }

  std::error_code write(std::string_view bytes) {
    while (!bytes.empty()) {
      const auto count = retryInterrupted([&] { return files_.write(handle_, bytes); });
      if (!count.ok()) return count.error();
      if (*count == 0) return std::make_error_code(std::errc::io_error);
      bytes.remove_prefix(*count);
    }
    return {};
  }

  std::error_code flushFolder() {
    const auto folder = retryInterrupted([&] { return files_.openFolder(folderOf(path_).append("/.")); });
    if (!folder.ok()) return folder.error();
    const auto error = files_.flush(*folder);
    files_.close(*folder);
    return error;
  }

  ReplaceOutcome giveUp(std::error_code error, const char* step) {
    retryInterrupted([&] { return files_.remove(temporary_); });
    return {error, step, {}, {}};
  }

  Files& files_;
  const std::string& path_;
  std::string temporary_;
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
