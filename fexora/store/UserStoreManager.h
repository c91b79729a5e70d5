// A dictionary of named values in memory, mirrored to one property-list file that two processes
// share.
//
// A save writes the whole dictionary by atomic rename and opens a skip period of one second, in
// which the process ignores changes of the folder, its own among them. Outside of it a change of
// the folder makes the store read the file again, replace its dictionary whole and post
// "FileWatcherUpdate". There is no lock and no merge: who saves last wins, and a reload drops what
// this process had not saved. What arrives inside the skip period is missed until the folder's next
// change, unless setReconcilesAfterSkip(true) was called.
//
// Nothing here fails towards the caller: what cannot be read leaves the dictionary as it was, what
// cannot be written leaves the old file whole, and both are logged; so is memory that cannot be
// had. A value that no file can hold (a null value, text with control characters, too large a one)
// stops no other: the log has "SAVE FAIL", but the file is written, with what it had under that
// value's key, or without the key. A file that cannot be read as a dictionary is kept aside, by a
// hard link beside it (a copy where there are none), before a save replaces it. A file that cannot
// be opened or read for now (no permission, too many open files, no module for its form) is not
// replaced: saves fail, until the next change of the folder or, at the latest, the next save finds
// that it can be read. Such a save fails, too; then the file is loaded, which drops what this
// process had not saved, and "FileWatcherUpdate" is posted by the loop, soon after.
//
// "SAVE SUCCESS" in the log means that the save survives a power cut. When only the last step of
// one failed, flushing the folder, the new file stays, the log has "SAVE FAIL", and the problem
// says that its durability is unknown. Where the system cannot flush folders at all, or this user
// may not open this one, the log says that beside "SAVE SUCCESS".
// Main thread only. No timer and no folder event is delivered after the destructor.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "fexora/platform/Platform.h"
#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/loop/TimerHolder.h"
#include "fexora/platform/values/NSObject.h"
#include "fexora/store/FolderMonitor.h"
#include "fexora/store/StoreFile.h"

namespace fexora {

// The application group whose processes share the container folder.
inline constexpr std::string_view kAppGroupIdentifier = "FX4C7Q2M9K.org.fexora.shared";

// Reachable by name: "ud", "storeName", "skipUpdate", "applicationDocumentsDirectory", "fileURL"
// (all but "storeName" settable), and the selectors "loadData", "folderUpdate", "synchronize",
// "startSyncTimer", "startDisableSkipUpdateTimer", "syncFromTimer:" and "disableSkipFileUpdate:"
// (the argument, a timer, is not looked at).
class FEXORA_API UserStoreManager : public NSObject {
 public:
  static constexpr double kSkipSeconds = 1.0;
  static constexpr double kSyncDelaySeconds = 1.0;

  UserStoreManager(const UserStoreManager&) = delete;
  UserStoreManager& operator=(const UserStoreManager&) = delete;
  ~UserStoreManager() override;

  // Null before the start, and where there is no folder to watch.
  virtual FolderMonitor* folderMonitor() const { return folderMonitor_.get(); }
  // The in-memory copy of the file. Setting it writes nothing.
  virtual const Dictionary& ud() const { return ud_; }
  virtual void setUd(Dictionary ud) { ud_ = std::move(ud); }
  // The file's name in the folder.
  virtual std::string storeName() const { return ""; }

  // Replaces `ud` by the file's content; where there is no file, makes one of the current `ud`.
  virtual void loadData();

  virtual bool skipUpdate() const { return skipUpdate_; }
  virtual void setSkipUpdate(bool skip) { skipUpdate_ = skip; }
  // The folder has changed: outside the skip period, loads and then posts the notification.
  virtual void folderUpdate();
  // Writes `ud` now and opens the skip period, whose second starts anew.
  virtual void synchronize();

  virtual const std::shared_ptr<Timer>& syncTimer() const { return syncTimer_; }
  virtual void setSyncTimer(std::shared_ptr<Timer> timer) { syncTimer_ = std::move(timer); }
  // Writes one second from now; a further call moves that to a second from then.
  virtual void startSyncTimer();
  // What that timer does: a save that opens no skip period, so that outside of one this process
  // takes its own write for the other's.
  virtual void syncFromTimer(const std::shared_ptr<Timer>& timer);
  virtual const std::shared_ptr<Timer>& timer() const { return timer_; }
  virtual void setTimer(std::shared_ptr<Timer> timer) { timer_ = std::move(timer); }
  // Closes the skip period one second from now.
  virtual void startDisableSkipUpdateTimer();
  virtual void disableSkipFileUpdate(const std::shared_ptr<Timer>& timer);

  // The container folder, found at the first call and kept; empty when there is none. Setting it
  // moves neither the watch nor a `fileURL` that is already kept.
  virtual const std::string& applicationDocumentsDirectory();
  virtual void setApplicationDocumentsDirectory(std::string folder);
  // The store file's path: `storeName` in that folder, found at the first call and kept; empty when
  // there is no folder, and then the store works in memory.
  virtual const std::string& fileURL();
  virtual void setFileURL(std::string path);

  std::optional<Value> valueForKey(std::string_view name) const override;
  bool setValueForKey(std::string_view name, const Value& value) override;
  std::optional<Value> perform(std::string_view selector, const Array& arguments = {}) override;

  // Off by default. On: when a skip period ends and the file is not the one that this process last
  // wrote or read, the store takes it over and posts the notification then.
  bool reconcilesAfterSkip() const { return reconcilesAfterSkip_; }
  void setReconcilesAfterSkip(bool reconciles) { reconcilesAfterSkip_ = reconciles; }

  // Called after each save, also the timer's: `saveProblem` says how it went. The last function set
  // counts, an empty one ends it. It comes within the operation that saves: it neither saves nor
  // ends the store or what is built on it.
  void setAfterSave(std::function<void()> afterSave);

  // One line that says why the last save or load went wrong; empty when it went well.
  const std::string& saveProblem() const { return saveProblem_; }
  const std::string& loadProblem() const { return loadProblem_; }

 protected:
  // `folder` takes the place of the container that the environment names; empty: there is none,
  // all stays in memory, and a save goes well with nothing written.
  explicit UserStoreManager(Platform& platform, std::optional<std::string> folder = {})
      : platform_(platform), named_(std::move(folder)), file_(platform) {}
  // Loads, then watches the folder. The most derived constructor's last step, since a base
  // constructor does not reach the overrides.
  void start();

  // What loadData() does; may throw std::bad_alloc.
  void load();
  // Runs what a load does. Where there is no memory for it, the file counts as one that cannot be
  // read for now: the next save loads it, and overwrites nothing.
  template <class Steps>
  void loadInSteps(Steps steps) {
    if (!attempt("Loading the store", std::move(steps))) distrustFile();
  }

  // Runs an operation; without memory for it the log says so. False then.
  template <class Body>
  bool attempt(std::string_view operation, Body body) const {
    return guarded(*platform_.log, operation, std::move(body));
  }
  Platform& platform() const { return platform_; }

 private:
  void log(std::string_view line) const { platform_.log->write(line); }
  std::optional<Value> member(std::string_view name) const;
  bool setMember(std::string_view name, const Value& value);
  void distrustFile();
  void reload();
  void save();
  bool isInMemory() const { return named_ && named_->empty() && fileURL_.empty(); }
  StoreFile::Saving write(const Dictionary& content);
  void tellSaved();
  void tellChanged();

  Platform& platform_;
  const std::optional<std::string> named_;
  std::unique_ptr<FolderMonitor> folderMonitor_;
  Dictionary ud_;
  bool skipUpdate_ = false;
  std::shared_ptr<Timer> syncTimer_;
  std::shared_ptr<Timer> timer_;
  // What this store scheduled itself, whatever the two above have been set to.
  TimerHolder syncHolder_;
  TimerHolder skipHolder_;
  TimerHolder tellHolder_;
  // Each with whether it is found, or found to be none.
  std::string applicationDocumentsDirectory_;
  bool hasFolder_ = false;
  std::string fileURL_;
  bool hasPath_ = false;
  StoreFile file_;
  bool reconcilesAfterSkip_ = false;
  std::shared_ptr<const std::function<void()>> afterSave_;
  std::string saveProblem_;
  std::string loadProblem_;
};

}  // namespace fexora
