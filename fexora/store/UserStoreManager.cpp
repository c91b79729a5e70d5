#include "fexora/store/UserStoreManager.h"

#include <utility>

#include "fexora/platform/files/AtomicWriter.h"
#include "fexora/platform/files/ContainerFolder.h"

namespace fexora {

UserStoreManager::~UserStoreManager() {
  if (syncTimer_ != nullptr) syncTimer_->invalidate();
  if (timer_ != nullptr) timer_->invalidate();
}

void UserStoreManager::start() {
  loadData();
  attempt("Watching the store's folder", [this] {
    const std::string& folder = applicationDocumentsDirectory();
    if (folder.empty()) return;
    folderMonitor_ = std::make_unique<FolderMonitor>(
        folder, [this] { folderUpdate(); }, platform_);
    removeDeadTemporaries(*platform_.files, folder);
  });
}

void UserStoreManager::loadData() {
  loadInSteps([this] { load(); });
}

void UserStoreManager::load() {
  const std::string& path = fileURL();
  if (path.empty()) return;
  auto found = file_.read(path);
  loadProblem_ = std::move(found.problem);
  if (!loadProblem_.empty()) log(loadProblem_);
  if (found.state == StoreFile::State::usable) ud_ = std::move(found.content);
  if (found.state == StoreFile::State::missing) synchronize();
}

void UserStoreManager::distrustFile() {
  file_.distrust();
  loadProblem_ = kOutOfMemory;
}

void UserStoreManager::folderUpdate() {
  if (!skipUpdate_) reload();
}

void UserStoreManager::reload() {
  loadData();
  tellChanged();
}

void UserStoreManager::synchronize() {
  skipUpdate_ = true;
  save();
}

void UserStoreManager::syncFromTimer(const std::shared_ptr<Timer>& /*timer*/) {
  save();
}

void UserStoreManager::startSyncTimer() {
  attempt("Saving the store later", [this] {
    if (syncTimer_ != nullptr) syncTimer_->invalidate();
    syncTimer_ = syncHolder_.schedule(*platform_.loop, kSyncDelaySeconds,
                                      [this] { syncFromTimer(syncTimer_); });
  });
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
  if (reconcilesAfterSkip_ && file_.isReplaced(fileURL())) folderUpdate();
}

void UserStoreManager::setAfterSave(std::function<void()> afterSave) {
  attempt("Following the saves", [&] {
    afterSave_ =
        afterSave ? std::make_shared<const std::function<void()>>(std::move(afterSave)) : nullptr;
  });
}

void UserStoreManager::save() {
  if (isInMemory()) {
    skipUpdate_ = false;
    return;
  }
  const Dictionary content = ud_;
  const auto afterSave = afterSave_;  // it may set another
  startDisableSkipUpdateTimer();
  StoreFile::Saving saving{kOutOfMemory};
  attempt("Saving the store", [&] { saving = write(content); });
  saveProblem_ = std::move(saving.problem);
  tellSaved();
  if (saving.isUnread) {
    loadData();
    // Not within the save: an observer may end the store and all that is built on it.
    attempt("Telling of a changed store",
            [this] { tellHolder_.schedule(*platform_.loop, 0, [this] { tellChanged(); }); });
  }
  if (afterSave != nullptr) {
    quietly(*platform_.log, "A function called after a save", *afterSave);
  }
}

void UserStoreManager::tellChanged() {
  platform_.notifications->postNotification(fileWatcherUpdate);
}

StoreFile::Saving UserStoreManager::write(const Dictionary& content) {
  const std::string& path = fileURL();
  if (!path.empty()) return file_.save(path, content);
  return {loadProblem_.empty() ? "there is no container folder to save into" : loadProblem_};
}

void UserStoreManager::tellSaved() {
  log(saveProblem_.empty() ? "SAVE SUCCESS" : "SAVE FAIL");
  // Without a container the reason was said when the container was looked for.
  if (!saveProblem_.empty() && !fileURL_.empty()) log(saveProblem_);
}

const std::string& UserStoreManager::applicationDocumentsDirectory() {
  if (hasFolder_) return applicationDocumentsDirectory_;
  attempt("Looking for the container folder", [this] {
    auto container = named_ && named_->empty() ? ContainerFolder()
                     : named_                  ? namedFolder(*platform_.files, *named_)
                              : containerFolder(*platform_.files, kAppGroupIdentifier);
    if (!container.problem.empty()) log(container.problem);
    if (container.path.empty()) loadProblem_ = container.problem;
    applicationDocumentsDirectory_ = std::move(container.path);
    hasFolder_ = true;
  });
  return applicationDocumentsDirectory_;
}

void UserStoreManager::setApplicationDocumentsDirectory(std::string folder) {
  applicationDocumentsDirectory_ = std::move(folder);
  hasFolder_ = true;
}

const std::string& UserStoreManager::fileURL() {
  if (hasPath_) return fileURL_;
  attempt("Naming the store file", [this] {
    const std::string& folder = applicationDocumentsDirectory();
    // Without memory for it the next call looks again.
    if (!hasFolder_) return;
    fileURL_ = folder.empty() ? "" : folder + "/" + storeName();
    hasPath_ = true;
  });
  return fileURL_;
}

void UserStoreManager::setFileURL(std::string path) {
  fileURL_ = std::move(path);
  hasPath_ = true;
  file_.forget();
}

}  // namespace fexora
