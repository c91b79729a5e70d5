#include "fexora/store/StoreFile.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/files/AtomicWriter.h"
#include "fexora/platform/files/ContainerFolder.h"
#include "fexora/platform/files/KeepUnderName.h"
#include "fexora/platform/files/ReadFile.h"
#include "fexora/platform/plist/DictionaryCodec.h"

namespace fexora {
namespace {

constexpr std::uint32_t kFileMode = 0600;
constexpr std::string_view kAsidePrefix = ".fexora-unreadable-";
static_assert(kAsidePrefix.starts_with(kOwnPrefix));

// What stands at the path will not become readable by waiting.
bool isContentError(const std::error_code& error) {
  return error == std::errc::too_many_symbolic_link_levels || error == std::errc::is_a_directory ||
         error == std::errc::operation_not_supported || error == std::errc::file_too_large;
}

bool isNoFlushHere(const std::error_code& error) {
  return error == std::errc::invalid_argument || error == std::errc::operation_not_supported ||
         error == std::errc::function_not_supported || error == std::errc::permission_denied;
}

bool isSameFile(const FileStatus& a, const FileStatus& b) {
  return a.inode == b.inode && a.device == b.device;
}

}  // namespace

StoreFile::StoreFile(Platform& platform) noexcept : platform_(platform) {}

StoreFile::~StoreFile() = default;

void StoreFile::forget() noexcept {
  state_ = State::usable;
  known_ = {};
  codec_.reset();
}

DictionaryCodec& StoreFile::codec() {
  if (codec_ == nullptr) codec_ = std::make_unique<DictionaryCodec>();
  return *codec_;
}

StoreFile::Reading StoreFile::read(const std::string& path) {
  const auto reject = [&](State state, const FileStatus& status, const std::string& why) {
    state_ = state;
    known_ = status;
    return Reading{state, {}, "The store " + path + why};
  };
  auto file = readWholeFile(*platform_.files, path, limits::kStoreFileBytes);
  if (!file.ok() && file.error() == std::errc::no_such_file_or_directory) {
    return {state_ = State::missing, {}, {}};
  }
  if (!file.ok()) {
    const auto status = platform_.files->statusOf(path);
    return reject(isContentError(file.error()) ? State::damaged : State::inaccessible, *status,
                  " cannot be read: " + file.error().message());
  }
  auto content = codec().decode(std::move(file->bytes));
  if (!content.ok()) {
    const bool isDamaged = content.fault == PlistFault::content;
    return reject(isDamaged ? State::damaged : State::inaccessible, file->status,
                  (isDamaged ? " is no dictionary: " : " cannot be read: ") + content.error);
  }
  known_ = file->status;
  return {state_ = State::usable, std::move(content.dictionary), {}};
}

StoreFile::Saving StoreFile::save(const std::string& path, const Dictionary& content) {
  const std::string failed = "The store " + path + " was not saved: ";
  if (state_ == State::inaccessible) {
    const Reading found = read(path);
    if (found.state == State::inaccessible) {
      return {failed + "it is not replaced while it cannot be read (" + found.problem + ")"};
    }
    if (found.state == State::usable) {
      distrust();
      return {failed + "it can be read again, and what it holds comes first", true};
    }
    if (found.state == State::damaged) platform_.log->write(found.problem);
  }
  return {replace(path, failed, content)};
}

// The problem, or nothing when the file is written.
std::string StoreFile::replace(const std::string& path, const std::string& failed,
                               const Dictionary& content) {
  const auto encoded = codec().encode(content);
  const auto outcome = replaceFile(*platform_.files, path, encoded.bytes, kFileMode,
                                   [&] { return keepAside(path); });
  if (outcome.error) return failed + outcome.step + ": " + outcome.error.message();
  known_ = outcome.status;
  state_ = State::usable;
  const std::string partly =
      encoded.ok() ? "" : "The store " + path + " was not saved whole: " + encoded.error;
  if (!outcome.doubt) return partly;
  std::string doubt = "The store " + path +
                      " is replaced, but may not survive a power cut: " + outcome.doubt.message();
  // Where folders cannot be flushed at all, no save would ever be a success.
  if (!isNoFlushHere(outcome.doubt)) return doubt;
  platform_.log->write(doubt);
  return partly;
}

bool StoreFile::isReplaced(const std::string& path) const {
  if (path.empty()) return false;
  const auto status = platform_.files->statusOf(path);
  return status.ok() && (!isSameFile(*status, known_) || status->modified != known_.modified ||
                         status->size != known_.size);
}

std::error_code StoreFile::keepAside(const std::string& path) {
  if (state_ != State::damaged) return {};
  Files& files = *platform_.files;
  const auto status = files.statusOf(path);
  // Replaced or gone meanwhile: nothing is left to keep. Kept when an earlier save failed after
  // this step: once is enough.
  if (!status.ok()) {
    const bool isGone = status.error() == std::errc::no_such_file_or_directory;
    return isGone ? std::error_code() : status.error();
  }
  if (!isSameFile(*status, known_) || isSameFile(*status, aside_)) return {};
  const std::string folder = folderOf(path) + "/";
  const auto date = Date(platform_.loop->wallSeconds()).isoText();
  const std::string name = std::string(kAsidePrefix) + date.value_or("undated");
  std::string used = name;
  auto error = keepUnderName(files, path, folder + used);
  for (int i = 2; error == std::errc::file_exists && i < limits::kTemporaryNames; ++i) {
    used = name + "-" + std::to_string(i);
    error = keepUnderName(files, path, folder + used);
  }
  if (error) return error;
  aside_ = *status;
  dropOldestAside(folder, used);
  return {};
}

// The newest stays, even where the clock was set back and its name is the first.
void StoreFile::dropOldestAside(const std::string& folder, const std::string& newest) {
  auto names = platform_.files->list(folder);
  if (!names.ok()) return;
  std::erase_if(*names, [&newest](const std::string& name) {
    return !name.starts_with(kAsidePrefix) || name == newest;
  });
  std::sort(names->begin(), names->end());
  for (std::size_t i = 0; i + limits::kUnreadableCopies < names->size() + 1; ++i) {
    platform_.files->remove(folder + (*names)[i]);
  }
}

}  // namespace fexora
