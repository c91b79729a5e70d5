#include "fexora/store/UserStoreManager.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/files/AtomicWriter.h"
#include "fexora/platform/files/ContainerFolder.h"
#include "fexora/platform/files/KeepUnderName.h"
#include "fexora/platform/files/ReadFile.h"
#include "fexora/platform/files/Retry.h"

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

const std::string& noPath() {
  static NoDestructor<std::string> none;
  return *none;
}

}  // namespace

UserStoreManager::~UserStoreManager() {
  if (syncTimer_ != nullptr) syncTimer_->invalidate();
  if (timer_ != nullptr) timer_->invalidate();
}

void UserStoreManager::start() {
  loadData();
  const std::string& folder = applicationDocumentsDirectory();
  if (folder.empty()) return;
  removeDeadTemporaries(*platform_.files, folder);
  attempt("Watching the store's folder", [&] {
    folderMonitor_ = std::make_unique<FolderMonitor>(
        folder, [this] { folderUpdate(); }, platform_);
  });
}

void UserStoreManager::loadData() {
  if (attempt("Loading the store", [this] { load(); })) return;
  disk_ = Disk::inaccessible;
  loadProblem_ = kOutOfMemory;
}

void UserStoreManager::load() {
  if (fileURL().empty()) return;
  const Disk found = readFile();
  if (!loadProblem_.empty()) log(loadProblem_);
  if (found == Disk::missing) synchronize();
}

UserStoreManager::Disk UserStoreManager::readFile() {
  const std::string& path = fileURL();
  auto file = readWholeFile(*platform_.files, path, limits::kStoreFileBytes);
  if (!file.ok() && file.error() == std::errc::no_such_file_or_directory) {
    loadProblem_.clear();
    return disk_ = Disk::missing;
  }
  if (!file.ok()) {
    const auto status = retryInterrupted([&] { return platform_.files->statusOf(path); });
    return refuse(isContentError(file.error()) ? Disk::unreadable : Disk::inaccessible, *status,
                  " cannot be read: ", file.error().message());
  }
  auto content = codec_.decode(std::move((*file).bytes));
  if (!content.ok()) {
    const bool isDamaged = content.fault == PlistFault::content;
    return refuse(isDamaged ? Disk::unreadable : Disk::inaccessible, file->status,
                  isDamaged ? " is no dictionary: " : " cannot be read: ", content.error);
  }
  ud_ = std::move(content.dictionary);
  noteSaved(ud_, file->status);
  loadProblem_.clear();
  return disk_;
}

UserStoreManager::Disk UserStoreManager::refuse(Disk state, const FileStatus& status,
                                                const char* verdict, const std::string& why) {
  disk_ = state;
  known_ = status;
  loadProblem_ = "The store " + fileURL() + verdict + why;
  return state;
}

void UserStoreManager::noteSaved(const Dictionary& content, const FileStatus& status) {
  base_ = content;
  known_ = status;
  disk_ = Disk::usable;
  loaded_ = true;
}

void UserStoreManager::takeBack(Loaded before) {
  setUd(std::move(before.ud));
  base_ = std::move(before.base);
  loaded_ = before.loaded;
  disk_ = Disk::inaccessible;
  loadProblem_ = kOutOfMemory;
}

void UserStoreManager::folderUpdate() {
  if (skipUpdate_) return;
  loadData();
  platform_.notifications->postNotification(fileWatcherUpdate);
}

void UserStoreManager::synchronize() {
  skipUpdate_ = true;
  const Dictionary content = ud_;
  startDisableSkipUpdateTimer();
  writeFile(content);
}

void UserStoreManager::syncFromTimer(const std::shared_ptr<Timer>& /*timer*/) {
  const Dictionary content = ud_;
  startDisableSkipUpdateTimer();
  writeFile(content);
}

void UserStoreManager::startSyncTimer() {
  const bool isSet = attempt("Saving the store later", [this] {
    if (syncTimer_ != nullptr) syncTimer_->invalidate();
    syncTimer_ = syncHolder_.schedule(*platform_.loop, kSyncDelaySeconds,
                                      [this] { syncFromTimer(syncTimer_); });
  });
  // Better at once than never.
  if (!isSet) syncFromTimer(nullptr);
}

void UserStoreManager::startDisableSkipUpdateTimer() {
  const bool isSet = attempt("Ignoring the own save", [this] {
    if (timer_ != nullptr) timer_->invalidate();
    timer_ = skipHolder_.schedule(*platform_.loop, kSkipSeconds,
                                  [this] { disableSkipFileUpdate(timer_); });
  });
  // A period that nothing ends would leave the store deaf; its own save is one reload too many.
  if (!isSet) skipUpdate_ = false;
}

void UserStoreManager::disableSkipFileUpdate(const std::shared_ptr<Timer>& /*timer*/) {
  skipUpdate_ = false;
  if (reconcilesAfterSkip_ && differsOnDisk()) folderUpdate();
}

bool UserStoreManager::differsOnDisk() {
  const std::string& path = fileURL();
  if (path.empty()) return false;
  const auto status = platform_.files->statusOf(path);
  return status.ok() && (!isSameFile(*status, known_) || status->modified != known_.modified ||
                         status->size != known_.size);
}

void UserStoreManager::writeFile(const Dictionary& content) {
  bool isShort = false;
  try {
    saveProblem_ = save(content);
  } catch (const std::bad_alloc&) {
    saveProblem_ = kOutOfMemory;
    isShort = true;
  }
  if (saveProblem_.empty()) {
    log("SAVE SUCCESS");
    return;
  }
  log("SAVE FAIL");
  // Without a container the reason was said when the container was looked for.
  if (!fileURL_ || fileURL_->empty()) return;
  if (isShort) {
    logShortage(*platform_.log, "The store ", *fileURL_, " was not saved");
  } else {
    log(saveProblem_);
  }
}

// The problem, or nothing when the file is written.
std::string UserStoreManager::save(Dictionary content) {
  const std::string& path = fileURL();
  if (path.empty()) {
    return loadProblem_.empty() ? "there is no container folder to save into" : loadProblem_;
  }
  const std::string what = "The store " + path + " was not saved: ";
  std::string doubt = "The store " + path + " is replaced, but may not survive a power cut: ";
  if (disk_ == Disk::inaccessible && regainAccess(content) == Disk::inaccessible) {
    return what + "it is not replaced while it cannot be read (" + loadProblem_ + ")";
  }
  auto encoded = codec_.encode(content);
  if (!encoded.ok()) {
    if (encoded.fault == PlistFault::memory) throw std::bad_alloc();
    return what + encoded.error;
  }
  const auto outcome =
      replaceFile(*platform_.files, path, encoded.bytes, kFileMode, [this] { return keepAside(); });
  if (outcome.error) return what + outcome.step + ": " + outcome.error.message();
  noteSaved(content, outcome.status);
  if (!outcome.doubt) return {};
  doubt += outcome.doubt.message();
  // Where folders cannot be flushed at all, no save would ever be a success.
  if (!isNoFlushHere(outcome.doubt)) return doubt;
  log(doubt);
  return {};
}

// A file that could not be read is tried again before it is replaced. What it holds stays under
// the keys that this process has not changed.
UserStoreManager::Disk UserStoreManager::regainAccess(Dictionary& content) {
  const Dictionary mine = ud_;
  const Dictionary before = loaded_ ? base_ : defaultContent();
  const Disk found = readFile();
  if (found == Disk::unreadable) log(loadProblem_);
  if (found != Disk::usable) return found;
  // Of two entries with one key the first stays.
  std::vector<Dictionary::Entry> entries;
  for (const auto& [key, value] : content) {
    const Value* old = before.find(key);
    if (old == nullptr || *old != value) entries.emplace_back(key, value);
  }
  entries.insert(entries.end(), ud_.begin(), ud_.end());
  content = Dictionary::fromEntries(entries);
  ud_ = content;
  contentMerged();
  return found;
}

std::error_code UserStoreManager::keepAside() {
  if (disk_ != Disk::unreadable) return {};
  Files& files = *platform_.files;
  const std::string& path = fileURL();
  const auto status = retryInterrupted([&] { return files.statusOf(path); });
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
void UserStoreManager::dropOldestAside(const std::string& folder, const std::string& newest) {
  auto names = retryInterrupted([&] { return platform_.files->list(folder); });
  if (!names.ok()) return;
  std::erase_if(*names, [&newest](const std::string& name) {
    return !name.starts_with(kAsidePrefix) || name == newest;
  });
  std::sort(names->begin(), names->end());
  for (std::size_t i = 0; i + limits::kUnreadableCopies < names->size() + 1; ++i) {
    platform_.files->remove(folder + (*names)[i]);
  }
}

const std::string& UserStoreManager::applicationDocumentsDirectory() {
  if (applicationDocumentsDirectory_) return *applicationDocumentsDirectory_;
  const bool isFound = attempt("Looking for the container folder", [this] {
    auto container = containerFolder(*platform_.files, kAppGroupIdentifier);
    if (!container.problem.empty()) log(container.problem);
    if (container.path.empty()) loadProblem_ = container.problem;
    applicationDocumentsDirectory_ = std::move(container.path);
  });
  return isFound ? *applicationDocumentsDirectory_ : noPath();
}

void UserStoreManager::setApplicationDocumentsDirectory(std::string folder) {
  applicationDocumentsDirectory_ = std::move(folder);
}

const std::string& UserStoreManager::fileURL() {
  if (fileURL_) return *fileURL_;
  const std::string& folder = applicationDocumentsDirectory();
  // Without memory for it the next call looks again.
  if (!applicationDocumentsDirectory_) return noPath();
  const bool isMade = attempt("Naming the store file",
                              [&] { fileURL_ = folder.empty() ? "" : folder + "/" + storeName(); });
  return isMade ? *fileURL_ : noPath();
}

void UserStoreManager::setFileURL(std::string path) {
  fileURL_ = std::move(path);
  disk_ = Disk::usable;
  known_ = {};
}

}  // namespace fexora
