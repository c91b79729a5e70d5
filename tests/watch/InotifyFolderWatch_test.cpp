// Real folders, real inotify. The kernel queues each event before the call that causes it returns,
// so a few rounds of the loop show everything that will come, and also that nothing more does.
#include "fexora/platform/watch/InotifyFolderWatch.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "fexora/platform/base/Limits.h"

#include "tests/support/ForwardingLoop.h"
#include "tests/support/Pump.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora::test {
namespace {

namespace fs = std::filesystem;

// With timers on a clock in the test's hand, and descriptors that it watches unless told not to.
class HandTimedLoop final : public ForwardingLoop {
 public:
  std::shared_ptr<Timer> scheduleTimer(double seconds, Function function) override {
    return clock.scheduleTimer(seconds, std::move(function));
  }
  std::unique_ptr<DescriptorWatch> watchReadable(int descriptor, Function function) override {
    return isFull ? nullptr : ForwardingLoop::watchReadable(descriptor, std::move(function));
  }
  VirtualRunLoop clock;
  bool isFull = false;
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
  // Runs a line of the shell in the scratch folder, where $F is the folder that is watched; the
  // calls that it brings.
  int after(const std::string& line) {
    const std::string whole = "cd " + scratch_.path() + "; F=a/b/folder; " + line;
    EXPECT_EQ(std::system(whole.c_str()), 0) << line;
    return calls();
  }

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

constexpr const char* kGone = "is not there; waiting for it: No such file";
constexpr const char* kAgain = "is watched again";

TEST_F(WatchOfAFolder, WhatHappens_CallsOnceEach) {
  struct Case {
    std::vector<std::pair<const char*, int>> steps;
    std::vector<const char*> lines;  // what the log has, in this order
  };
  const Case cases[] = {
      // Each kind of change.
      {{{"true", 0},
        {"mkdir $F/inner; touch beside", 1},
        {"mv beside $F", 1},
        {"echo >> $F/beside", 1},
        {"mv $F/beside .", 1},
        {"rmdir $F/inner", 1}},
       {}},
      // What is no change of entries.
      {{{"touch $F/file; mkdir $F/inner", 1},
        {"chmod 400 $F/file", 0},
        {"touch $F/inner/deep a/b/beside", 0}},
       {}},
      // With the ignored prefix: only the final name of a save counts.
      {{{"touch $F/.own-1; ln $F/.own-1 $F/.own-2; rm $F/.own-2", 0},
        {"mv $F/.own-1 $F/Store.plist", 1}},
       {}},
      // Removed and made again, by itself and with all above at once.
      {{{"rm -r $F", 0}, {"mkdir $F", 1}, {"touch $F/file", 1}}, {kGone, kAgain}},
      {{{"rm -r a; mkdir -p $F", 1}, {"touch $F/file", 1}}, {kAgain}},
      // Moved away and back, then with the folder above, which comes back in parts.
      {{{"mv $F away", 0}, {"touch away/file", 0}, {"mv away $F", 1}, {"touch $F/file", 1}},
       {kGone, kAgain}},
      {{{"mv a z", 0}, {"mkdir a", 0}, {"mv z/b a/b", 1}, {"touch $F/file", 1}}, {kGone, kAgain}},
      // Replaced by another.
      {{{"mkdir other; touch other/file; mv -T other $F", 1}, {"touch $F/file", 1}}, {kAgain}},
  };
  for (const auto& [steps, lines] : cases) {
    watch_.reset();
    after("rm -rf *; mkdir -p $F");
    log_.lines.clear();
    watchFolder();
    for (const auto& [line, calls] : steps) EXPECT_EQ(after(line), calls) << line;
    ASSERT_EQ(log_.lines.size(), lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
      EXPECT_NE(log_.lines[i].find(folder_ + " " + lines[i]), std::string::npos) << log_.lines[i];
    }
  }
}

TEST_F(WatchOfAFolder, RemovedWhileHeldOpen_IsNoticed) {
  // The kernel tells a folder's end to its own watch only when the last holder lets go.
  const int held = ::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  ASSERT_GE(held, 0);
  EXPECT_EQ(after("rmdir $F; mkdir $F"), 1);
  EXPECT_EQ(after("touch $F/file"), 1);
  ::close(held);
  EXPECT_EQ(calls(), 0);
}

TEST_F(WatchOfAFolder, ManyChangesOrLostEvents_CallOnce) {
  for (int i = 0; i < 300; ++i) writeFile(folder_ + "/file" + std::to_string(i), "x");
  EXPECT_EQ(calls(), 1);
  EXPECT_EQ(after("touch $F/b"), 1);
  // Two events each; like ones in a row would be merged.
  const int limit = std::stoi(readFile("/proc/sys/fs/inotify/max_queued_events"));
  for (int i = 0; i < limit; ++i) {
    fs::rename(folder_ + (i % 2 == 0 ? "/b" : "/c"), folder_ + (i % 2 == 0 ? "/c" : "/b"));
  }
  EXPECT_EQ(calls(), 1);
  EXPECT_EQ(log_.count("more changes than the system keeps"), 1);
  EXPECT_EQ(after("touch $F/file"), 1);
}

TEST_F(WatchOfAFolder, NoRoomForTheNewWatch_IsSaidOnceAndTriedAgain) {
  loop_.isFull = true;
  EXPECT_EQ(after("rm -r $F; mkdir $F"), 0);
  loop_.clock.advance(limits::kFolderRetrySeconds);
  EXPECT_EQ(calls(), 0);
  loop_.isFull = false;
  EXPECT_EQ(log_.count("is no longer watched"), 1);
  EXPECT_EQ(log_.lines.size(), 1U);
  loop_.clock.advance(limits::kFolderRetrySeconds - 0.5);
  EXPECT_EQ(calls(), 0);
  loop_.clock.advance(0.5);
  EXPECT_EQ(calls(), 1);
  EXPECT_EQ(after("touch $F/file"), 1);
}

TEST_F(WatchOfAFolder, Gone_CallsNoMore) {
  writeFile(folder_ + "/file", "x");
  watch_.reset();
  EXPECT_EQ(calls(), 0);
  EXPECT_TRUE(inotifyDescriptors().empty());
  // With a look at the folder still due.
  watchFolder();
  loop_.isFull = true;
  EXPECT_EQ(after("rm -r $F"), 0);
  EXPECT_EQ(loop_.clock.timers(), 1U);
  watch_.reset();
  EXPECT_EQ(loop_.clock.timers(), 0U);
}

TEST_F(WatchOfAFolder, Descriptors_AreOneAndItsOwn) {
  for (int i = 0; i < 3; ++i) EXPECT_EQ(after("rmdir $F; mkdir $F"), 1);
  const std::vector<int> open = inotifyDescriptors();
  ASSERT_EQ(open.size(), 1U);
  EXPECT_NE(fcntl(open[0], F_GETFD) & FD_CLOEXEC, 0);
  EXPECT_NE(fcntl(open[0], F_GETFL) & O_NONBLOCK, 0);
}

TEST_F(WatchOfAFolder, EndedByItsOwnCall) {
  // By a change, and when the call tells of a break.
  for (const char* line : {"touch $F/file", "rm -r $F; mkdir $F"}) {
    watch_ = watcher_.watch(folder_, ".own-", [this] {
      watch_.reset();
      ++calls_;
    });
    EXPECT_EQ(after(line), 1);
  }
}

TEST_F(InotifyFolderWatchTest, MissingAtFirst_CallsWhenItComes) {
  watchFolder();
  ASSERT_NE(watch_, nullptr);
  EXPECT_EQ(log_.count(folder_ + " is not there; waiting for it"), 1);
  EXPECT_EQ(after("mkdir a"), 0);
  EXPECT_EQ(after("mkdir a/b; touch a/b/other"), 0);
  EXPECT_EQ(after("touch $F"), 0) << "a file in its place is no folder, yet";
  EXPECT_EQ(after("rm -r $F; mkdir $F"), 1);
  EXPECT_EQ(after("touch $F/file"), 1);
  EXPECT_EQ(log_.lines.size(), 2U);
  EXPECT_EQ(loop_.clock.timers(), 0U) << "nothing was polled for";
}

TEST_F(InotifyFolderWatchTest, NothingTellsOfTheFolder_OneTimerLooksForIt) {
  // The folder above may be passed but not read; the one above that can be watched.
  fs::create_directories(scratch_ / "a/b");
  after("chmod 777 . a; chmod 111 a/b");
  // As a user whom the rights of files bind.
  constexpr uid_t kNobody = 65534;
  const uid_t before = geteuid();
  ASSERT_EQ(seteuid(before == 0 ? kNobody : before), 0);
  watchFolder();
  const bool isBound = loop_.clock.timers() == 1;
  for (int i = 0; i < 3 && isBound; ++i) {
    EXPECT_EQ(after("mv a z; mv z a"), 0);
    EXPECT_EQ(loop_.clock.timers(), 1U) << i;
  }
  watch_.reset();
  EXPECT_EQ(loop_.clock.timers(), 0U) << "gone with its watch";
  watchFolder();
  EXPECT_EQ(after("mv a z"), 0);
  EXPECT_EQ(loop_.clock.timers(), 0U) << "an event tells now";
  EXPECT_EQ(after("mkdir -p $F"), 1);
  EXPECT_EQ(loop_.clock.timers(), 0U);
  ASSERT_EQ(seteuid(before), 0);
  fs::permissions(scratch_ / "z/b", fs::perms(0700));
  if (!isBound) GTEST_SKIP() << "rights do not bind here: nothing is proven";
}

TEST_F(WatchOfAFolder, WhatCannotBeWatched_IsNoWatchAndSaid) {
  const auto isRejected = [this](const std::string& folder, const std::string& reason) {
    folder_ = folder;
    log_.lines.clear();
    watchFolder();
    return watch_ == nullptr && log_.count(" cannot be watched" + reason) == 1;
  };
  EXPECT_TRUE(isRejected("", ": Invalid argument"));
  EXPECT_TRUE(isRejected(scratch_.path() + std::string(1, '\0'), ": Invalid argument"));
  EXPECT_TRUE(isRejected("/" + std::string(100'000, 'x'), ": File name too long"));
  loop_.isFull = true;
  EXPECT_TRUE(isRejected(scratch_.path(), ""));
}

}  // namespace
}  // namespace fexora::test
