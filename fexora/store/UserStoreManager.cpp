#include "fexora/store/UserStoreManager.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "fexora/platform/files/AtomicWriter.h"
#include "fexora/platform/files/ContainerFolder.h"
#include "fexora/platform/files/ReadFile.h"
#include "fexora/platform/foundation/Limits.h"

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
  folderMonitor_ = std::make_unique<FolderMonitor>(
      folder, [this] { folderUpdate(); }, platform_);
}

void UserStoreManager::loadData() {
  const std::string& path = fileURL();
  if (path.empty()) return;
  const auto status = platform_.files->statusOf(path);
  if (!status.ok() && status.error() == std::errc::no_such_file_or_directory) {
    loadProblem_.clear();
    disk_ = Disk::usable;
    synchronize();
    return;
  }
  readFile();
}

UserStoreManager::Disk UserStoreManager::readFile() {
  const std::string& path = fileURL();
  auto file = readWholeFile(*platform_.files, path, limits::kStoreFileBytes);
  if (!file.ok()) {
    const auto status = platform_.files->statusOf(path);
    refuse("The store " + path + " cannot be read: " + file.error().message(),
           isContentError(file.error()) ? Disk::unreadable : Disk::inaccessible, *status);
    return disk_;
  }
  auto content = codec_.decode(std::move((*file).bytes));
  if (!content.ok()) {
    refuse("The store " + path + " is no dictionary: " + content.error, Disk::unreadable,
           file->status);
    return disk_;
  }
  ud_ = std::move(content.dictionary);
  known_ = file->status;
  loaded_ = true;
  loadProblem_.clear();
  return disk_ = Disk::usable;
}

void UserStoreManager::refuse(std::string problem, Disk state, const FileStatus& status) {
  log(problem);
  loadProblem_ = std::move(problem);
  disk_ = state;
  known_ = status;
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
  if (syncTimer_ != nullptr) syncTimer_->invalidate();
  syncTimer_ =
      platform_.loop->scheduleTimer(kSyncDelaySeconds, [this] { syncFromTimer(syncTimer_); });
}

void UserStoreManager::startDisableSkipUpdateTimer() {
  if (timer_ != nullptr) timer_->invalidate();
  timer_ = platform_.loop->scheduleTimer(kSkipSeconds, [this] { disableSkipFileUpdate(timer_); });
}

void UserStoreManager::disableSkipFileUpdate(const std::shared_ptr<Timer>& /*timer*/) {
  skipUpdate_ = false;
  if (reconcilesAfterSkip_ && differsOnDisk()) folderUpdate();
}

bool UserStoreManager::differsOnDisk() {
  const std::string& path = fileURL();
  if (path.empty()) return false;
  const auto status = platform_.files->statusOf(path);
  return status.ok() && (status->inode != known_.inode || status->device != known_.device ||
                         status->modified != known_.modified || status->size != known_.size);
}

void UserStoreManager::writeFile(const Dictionary& content) {
  saveProblem_ = save(content);
  if (saveProblem_.empty()) {
    log("SAVE SUCCESS");
  } else {
    log("SAVE FAIL");
    // Without a container the reason was said when the container was looked for.
    if (!fileURL().empty()) log(saveProblem_);
  }
}

// The problem, or nothing when the file is written.
std::string UserStoreManager::save(const Dictionary& content) {
  const std::string& path = fileURL();
  if (path.empty()) {
    return loadProblem_.empty() ? "there is no container folder to save into" : loadProblem_;
  }
  const std::string what = "The store " + path + " was not saved: ";
  const bool wasInaccessible = disk_ == Disk::inaccessible;
  if (!regainAccess()) return what + "the file there cannot be read now, so it is not replaced";
  const auto encoded = codec_.encode(wasInaccessible ? ud_ : content);
  if (!encoded.ok()) return what + encoded.error;
  const auto outcome =
      replaceFile(*platform_.files, path, encoded.bytes, kFileMode, [this] { return keepAside(); });
  if (outcome.error) return what + outcome.step + ": " + outcome.error.message();
  if (outcome.doubt) {
    log("The store " + path +
        " is saved, but may not survive a power cut: " + outcome.doubt.message());
  }
  known_ = outcome.status;
  disk_ = Disk::usable;
  loaded_ = true;
  return {};
}

// A file that could not be read is tried again before it is replaced. What it holds comes back
// under the keys that this process has not set since.
bool UserStoreManager::regainAccess() {
  if (disk_ != Disk::inaccessible) return true;
  const Dictionary mine = ud_;
  const bool neverLoaded = !loaded_;
  if (readFile() == Disk::inaccessible) return false;
  if (!neverLoaded || disk_ == Disk::unreadable) {
    ud_ = mine;
    return true;
  }
  for (const auto& [key, value] : mine) ud_.set(key, value);
  return true;
}

std::error_code UserStoreManager::keepAside() {
  if (disk_ != Disk::unreadable) return {};
  const std::string& path = fileURL();
  const auto status = platform_.files->statusOf(path);
  // Replaced or gone meanwhile: nothing is left to keep.
  if (!status.ok() || status->inode != known_.inode || status->device != known_.device) return {};
  const std::string folder = folderOf(path);
  const auto date = Date(platform_.loop->wallSeconds()).isoText();
  const std::string name = folder + "/" + std::string(kAsidePrefix) + date.value_or("undated");
  auto error = platform_.files->link(path, name);
  for (int i = 2; error == std::errc::file_exists && i < limits::kTemporaryNames; ++i) {
    error = platform_.files->link(path, name + "-" + std::to_string(i));
  }
  if (!error) dropOldestAside(folder);
  return error;
}

void UserStoreManager::dropOldestAside(const std::string& folder) {
  auto names = platform_.files->list(folder);
  if (!names.ok()) return;
  std::erase_if(*names, [](const std::string& name) { return !name.starts_with(kAsidePrefix); });
  std::sort(names->begin(), names->end());
  for (std::size_t i = 0; i + limits::kUnreadableCopies < names->size(); ++i) {
    platform_.files->remove(folder + "/" + (*names)[i]);
  }
}

const std::string& UserStoreManager::applicationDocumentsDirectory() {
  if (!applicationDocumentsDirectory_) {
    auto container = containerFolder(*platform_.files, kAppGroupIdentifier);
    if (!container.problem.empty()) log(container.problem);
    if (container.path.empty()) loadProblem_ = container.problem;
    applicationDocumentsDirectory_ = std::move(container.path);
  }
  return *applicationDocumentsDirectory_;
}

void UserStoreManager::setApplicationDocumentsDirectory(std::string folder) {
  applicationDocumentsDirectory_ = std::move(folder);
}

const std::string& UserStoreManager::fileURL() {
  if (!fileURL_) {
    const std::string& folder = applicationDocumentsDirectory();
    fileURL_ = folder.empty() ? "" : folder + "/" + storeName();
  }
  return *fileURL_;
}

void UserStoreManager::setFileURL(std::string path) {
  fileURL_ = std::move(path);
  disk_ = Disk::usable;
  known_ = {};
}

}  // namespace fexora
