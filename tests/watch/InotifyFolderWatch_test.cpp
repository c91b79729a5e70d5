// Real folders, real inotify. The kernel queues each event before the call that causes it returns,
// so a few rounds of the loop show everything that will come, and also that nothing more does.
#include "fexora/platform/watch/InotifyFolderWatch.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/watch/InotifyPath.h"

#include "tests/support/Pump.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora::test {
namespace {

namespace fs = std::filesystem;

// The process's loop, with timers that fire when the test says so, and descriptors that it watches
// unless the test says not to.
class HandTimedLoop final : public RunLoop {
 public:
  class HandTimer final : public Timer {
   public:
    void invalidate() override { valid = false; }
    bool isValid() const override { return valid; }
    bool valid = true;
    double seconds = 0;
    Function function;
  };

  double monotonicSeconds() override { return real_.monotonicSeconds(); }
  double wallSeconds() override { return real_.wallSeconds(); }
  std::shared_ptr<Timer> scheduleTimer(double seconds, Function function) override {
    timer = std::make_shared<HandTimer>();
    timer->seconds = seconds;
    timer->function = std::move(function);
    all_.push_back(timer);
    return timer;
  }
  void post(Function function) override { real_.post(std::move(function)); }
  std::unique_ptr<DescriptorWatch> watchReadable(int descriptor, Function function) override {
    return isFull ? nullptr : real_.watchReadable(descriptor, std::move(function));
  }
  void runUntil(const std::function<bool()>& done) override { real_.runUntil(done); }

  void fire() {
    const auto due = std::exchange(timer, nullptr);
    ASSERT_NE(due, nullptr);
    ASSERT_TRUE(std::exchange(due->valid, false));
    due->function();
  }
  // Timers that would still fire.
  std::ptrdiff_t due() const {
    return std::count_if(all_.begin(), all_.end(), [](const auto& one) { return one->valid; });
  }

  std::shared_ptr<HandTimer> timer;
  bool isFull = false;

 private:
  std::vector<std::shared_ptr<HandTimer>> all_;
  RunLoop& real_ = RunLoop::process();
};

// Descriptors of this process that are inotify queues.
std::vector<int> inotifyDescriptors() {
  std::vector<int> found;
  for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    if (fs::read_symlink(entry.path(), gone) == "anon_inode:inotify") {
      found.push_back(std::stoi(entry.path().filename()));
    }
  }
  return found;
}

// Takes all low descriptor numbers, so that forbid() leaves none while the open ones stay usable.
class LowDescriptors {
 public:
  LowDescriptors() {
    getrlimit(RLIMIT_NOFILE, &before_);
    for (int last = 0; last >= 0 && last < kLow;) {
      last = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
      taken_.push_back(last);
    }
  }
  LowDescriptors(const LowDescriptors&) = delete;
  LowDescriptors& operator=(const LowDescriptors&) = delete;
  ~LowDescriptors() {
    allow();
    for (const int descriptor : taken_) ::close(descriptor);
  }
  // No new descriptors, until allow().
  void forbid() const { setLimit(kLow); }
  void allow() const { setLimit(before_.rlim_cur); }

 private:
  static constexpr int kLow = 20;  // above what the loop polls, which must stay within the limit
  void setLimit(rlim_t most) const {
    const rlimit limit{most, before_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &limit);
  }
  rlimit before_{};
  std::vector<int> taken_;
};

// While one lives, the process acts as a user whom the rights of files bind.
class Unprivileged {
 public:
  Unprivileged() {
    if (before_ == 0) {
      EXPECT_EQ(seteuid(kNobody), 0);
    }
  }
  Unprivileged(const Unprivileged&) = delete;
  Unprivileged& operator=(const Unprivileged&) = delete;
  ~Unprivileged() { EXPECT_EQ(seteuid(before_), 0); }

 private:
  static constexpr uid_t kNobody = 65534;
  const uid_t before_ = geteuid();
};

class InotifyFolderWatchTest : public testing::Test {
 protected:
  void watchFolder() {
    watch_ = watcher_.watch(folder_, ".own-", [this] { ++calls_; });
  }
  // The calls since the last time.
  int calls() {
    pump(loop_);
    return std::exchange(calls_, 0);
  }
  std::string in(const std::string& name) const { return folder_ + "/" + name; }

  const ScratchFolder scratch_;
  std::string folder_ = scratch_ / "a/b/folder";
  HandTimedLoop loop_;
  RecordingLog log_;
  InotifyFolderWatch watcher_{loop_, log_};
  int calls_ = 0;
  std::unique_ptr<FolderWatch::Watch> watch_;
};

class WatchOfAFolder : public InotifyFolderWatchTest {
 protected:
  void SetUp() override {
    fs::create_directories(folder_);
    watchFolder();
    ASSERT_NE(watch_, nullptr);
  }
};

TEST_F(WatchOfAFolder, EachKindOfChange_Calls) {
  EXPECT_EQ(calls(), 0);
  std::ofstream open(in("file"));
  EXPECT_EQ(calls(), 1) << "made";
  open << "x";
  open.close();
  EXPECT_EQ(calls(), 1) << "closed after writing";
  fs::rename(in("file"), scratch_ / "file");
  EXPECT_EQ(calls(), 1) << "moved out";
  fs::rename(scratch_ / "file", in("file"));
  EXPECT_EQ(calls(), 1) << "moved in";
  fs::remove(in("file"));
  EXPECT_EQ(calls(), 1) << "deleted";
  fs::create_directory(in("inner"));
  EXPECT_EQ(calls(), 1) << "a folder made";
  EXPECT_TRUE(log_.lines.empty());
}

TEST_F(WatchOfAFolder, WhatIsNoChangeOfEntries_DoesNotCall) {
  writeFile(in("file"), "x");
  fs::create_directory(in("inner"));
  EXPECT_EQ(calls(), 1);
  EXPECT_EQ(readFile(in("file")), "x");
  fs::permissions(in("file"), fs::perms::owner_read);
  writeFile(in("inner/deep"), "x");
  writeFile(scratch_ / "a/b/beside", "x");
  EXPECT_EQ(calls(), 0);
}

TEST_F(WatchOfAFolder, ChangesBetweenTwoRounds_GiveOneCall) {
  for (int i = 0; i < 300; ++i) writeFile(in("file" + std::to_string(i)), "x");
  EXPECT_EQ(calls(), 1);
}

TEST_F(WatchOfAFolder, IgnoredPrefix_OnlyTheFinalNameOfASaveCounts) {
  writeFile(in(".own-1"), "x");
  fs::create_hard_link(in(".own-1"), in(".own-2"));
  fs::remove(in(".own-2"));
  EXPECT_EQ(calls(), 0);
  fs::rename(in(".own-1"), in("Store.plist"));
  EXPECT_EQ(calls(), 1);
}

TEST_F(WatchOfAFolder, RemovedAndMadeAgain_CallsOnce) {
  fs::remove(folder_);
  EXPECT_EQ(calls(), 0);
  EXPECT_EQ(log_.count(folder_ + " is not there; waiting for it: No such file"), 1);
  fs::create_directory(folder_);
  EXPECT_EQ(calls(), 1);
  EXPECT_EQ(log_.count(folder_ + " is watched again"), 1);
  writeFile(in("file"), "x");
  EXPECT_EQ(calls(), 1);
  // Between two rounds, with all above it.
  fs::remove_all(scratch_ / "a");
  fs::create_directories(folder_);
  EXPECT_EQ(calls(), 1);
  writeFile(in("file"), "x");
  EXPECT_EQ(calls(), 1);
}

TEST_F(WatchOfAFolder, RemovedWhileHeldOpen_IsNoticed) {
  // The kernel tells a folder's end to its own watch only when the last holder lets go.
  const int held = ::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  ASSERT_GE(held, 0);
  fs::remove(folder_);
  fs::create_directory(folder_);
  EXPECT_EQ(calls(), 1);
  writeFile(in("file"), "x");
  EXPECT_EQ(calls(), 1);
  ::close(held);
  EXPECT_EQ(calls(), 0);
}

TEST_F(WatchOfAFolder, MovedAwayAndBack_CallsOnce) {
  fs::rename(folder_, scratch_ / "away");
  EXPECT_EQ(calls(), 0);
  writeFile(scratch_ / "away/file", "x");
  EXPECT_EQ(calls(), 0);
  fs::rename(scratch_ / "away", folder_);
  EXPECT_EQ(calls(), 1);
  writeFile(in("file"), "y");
  EXPECT_EQ(calls(), 1);
}

TEST_F(WatchOfAFolder, FolderAboveMoved_IsNoticed) {
  fs::rename(scratch_ / "a", scratch_ / "z");
  EXPECT_EQ(calls(), 0);
  EXPECT_EQ(log_.count("is not there"), 1);
  // One part after the other.
  fs::create_directory(scratch_ / "a");
  EXPECT_EQ(calls(), 0);
  fs::rename(scratch_ / "z/b", scratch_ / "a/b");
  EXPECT_EQ(calls(), 1);
  writeFile(in("file"), "x");
  EXPECT_EQ(calls(), 1);
  EXPECT_EQ(log_.lines.size(), 2U);
}

TEST_F(WatchOfAFolder, ReplacedByAnother_CallsOnce) {
  fs::create_directory(scratch_ / "other");
  writeFile(scratch_ / "other/file", "x");
  fs::rename(scratch_ / "other", folder_);
  EXPECT_EQ(calls(), 1);
  writeFile(in("file"), "y");
  EXPECT_EQ(calls(), 1);
}

TEST_F(WatchOfAFolder, LostEvents_CallOnce) {
  const int limit = std::stoi(readFile("/proc/sys/fs/inotify/max_queued_events"));
  writeFile(in("a"), "");
  fs::create_hard_link(in("a"), in("b"));
  EXPECT_EQ(calls(), 1);
  // Two events each; like ones in a row would be merged.
  for (int i = 0; i < limit; ++i) {
    fs::rename(in(i % 2 == 0 ? "b" : "c"), in(i % 2 == 0 ? "c" : "b"));
  }
  EXPECT_EQ(calls(), 1);
  EXPECT_EQ(log_.count("more changes than the system keeps"), 1);
  writeFile(in("a"), "x");
  EXPECT_EQ(calls(), 1);
}

TEST_F(WatchOfAFolder, NoRoomForTheNewWatch_IsSaidOnceAndTriedAgain) {
  fs::remove(folder_);
  fs::create_directory(folder_);
  loop_.isFull = true;
  EXPECT_EQ(calls(), 0);
  loop_.fire();
  EXPECT_EQ(calls(), 0);
  loop_.isFull = false;
  EXPECT_EQ(log_.count("is no longer watched"), 1);
  EXPECT_EQ(log_.lines.size(), 1U);
  ASSERT_NE(loop_.timer, nullptr);
  EXPECT_EQ(loop_.timer->seconds, limits::kFolderRetrySeconds);
  loop_.fire();
  EXPECT_EQ(calls(), 1);
  writeFile(in("file"), "x");
  EXPECT_EQ(calls(), 1);
}

TEST_F(WatchOfAFolder, Gone_CallsNoMore) {
  writeFile(in("file"), "x");
  watch_.reset();
  EXPECT_EQ(calls(), 0);
  EXPECT_TRUE(inotifyDescriptors().empty());
  // With a look at the folder still due.
  watchFolder();
  fs::remove_all(folder_);
  loop_.isFull = true;
  EXPECT_EQ(calls(), 0);
  const auto timer = loop_.timer;
  ASSERT_NE(timer, nullptr);
  watch_.reset();
  EXPECT_FALSE(timer->isValid());
}

TEST_F(WatchOfAFolder, Descriptors_AreOneAndItsOwn) {
  for (int i = 0; i < 20; ++i) {
    fs::remove(folder_);
    EXPECT_EQ(calls(), 0);
    fs::create_directory(folder_);
    EXPECT_EQ(calls(), 1);
  }
  const std::vector<int> open = inotifyDescriptors();
  ASSERT_EQ(open.size(), 1U);
  EXPECT_NE(fcntl(open[0], F_GETFD) & FD_CLOEXEC, 0);
  EXPECT_NE(fcntl(open[0], F_GETFL) & O_NONBLOCK, 0);
}

TEST_F(InotifyFolderWatchTest, EndedByItsOwnCall) {
  fs::create_directories(folder_);
  int told = 0;
  watch_ = watcher_.watch(folder_, ".own-", [this, &told] {
    watch_.reset();
    ++told;
  });
  writeFile(in("file"), "x");
  EXPECT_EQ(calls(), 0);
  EXPECT_EQ(told, 1);
  // The same when the call tells of a break.
  watch_ = watcher_.watch(folder_, ".own-", [this, &told] {
    watch_.reset();
    ++told;
  });
  fs::remove_all(folder_);
  fs::create_directory(folder_);
  EXPECT_EQ(calls(), 0);
  EXPECT_EQ(told, 2);
}

TEST_F(InotifyFolderWatchTest, MissingAtFirst_CallsWhenItComes) {
  watchFolder();
  ASSERT_NE(watch_, nullptr);
  EXPECT_EQ(log_.count(folder_ + " is not there; waiting for it"), 1);
  fs::create_directory(scratch_ / "a");
  EXPECT_EQ(calls(), 0);
  fs::create_directory(scratch_ / "a/b");
  writeFile(scratch_ / "a/b/other", "x");
  EXPECT_EQ(calls(), 0);
  // A file in its place is no folder, yet.
  writeFile(folder_, "x");
  EXPECT_EQ(calls(), 0);
  fs::remove(folder_);
  fs::create_directory(folder_);
  EXPECT_EQ(calls(), 1);
  writeFile(in("file"), "x");
  EXPECT_EQ(calls(), 1);
  EXPECT_EQ(log_.lines.size(), 2U);
  EXPECT_EQ(loop_.timer, nullptr) << "nothing was polled for";
}

TEST_F(InotifyFolderWatchTest, NothingTellsOfTheFolder_OneTimerLooksForIt) {
  // The folder above may be passed but not read; the one above that can be watched.
  fs::create_directories(scratch_ / "a/b");
  for (const char* open : {".", "a"}) fs::permissions(scratch_ / open, fs::perms(0777));
  fs::permissions(scratch_ / "a/b", fs::perms(0111));
  {
    const Unprivileged user;
    watchFolder();
    ASSERT_NE(watch_, nullptr);
    if (loop_.due() == 0) GTEST_SKIP() << "rights do not bind here: nothing is proven";
    for (int i = 0; i < 3; ++i) {
      fs::rename(scratch_ / "a", scratch_ / "z");
      fs::rename(scratch_ / "z", scratch_ / "a");
      EXPECT_EQ(calls(), 0);
      EXPECT_EQ(loop_.due(), 1) << i;
    }
    watch_.reset();
    EXPECT_EQ(loop_.due(), 0) << "gone with its watch";
    watchFolder();
    fs::rename(scratch_ / "a", scratch_ / "z");
    EXPECT_EQ(calls(), 0);
    EXPECT_EQ(loop_.due(), 0) << "an event tells now";
    fs::create_directories(folder_);
    EXPECT_EQ(calls(), 1);
    EXPECT_EQ(loop_.due(), 0);
  }
  fs::permissions(scratch_ / "z/b", fs::perms(0700));
}

TEST_F(InotifyFolderWatchTest, PathThatNoSystemTakes_IsNoWatchAndSaid) {
  for (const std::string& name :
       {std::string(), "/" + std::string(100'000, 'x'), scratch_.path() + std::string(1, '\0')}) {
    folder_ = name;
    watchFolder();
    EXPECT_EQ(watch_, nullptr);
  }
  EXPECT_EQ(log_.count("cannot be watched: File name too long"), 1);
  EXPECT_EQ(log_.count("cannot be watched: Invalid argument"), 2);
}

TEST_F(InotifyFolderWatchTest, NoRoomForTheWatch_IsNoWatchAndSaid) {
  fs::create_directories(folder_);
  loop_.isFull = true;
  watchFolder();
  EXPECT_EQ(watch_, nullptr);
  EXPECT_EQ(log_.count(folder_ + " cannot be watched"), 1);
}

TEST_F(InotifyFolderWatchTest, NoDescriptorLeft_IsTheError) {
  fs::create_directories(folder_);
  const LowDescriptors descriptors;
  descriptors.forbid();
  const InotifyPath path(folder_, ".own-");
  descriptors.allow();
  EXPECT_EQ(path.error(), std::errc::too_many_files_open);
  EXPECT_FALSE(path.isThere());
}

}  // namespace
}  // namespace fexora::test
