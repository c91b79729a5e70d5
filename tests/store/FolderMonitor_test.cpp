// The monitor on real folders; see also tests/watch.
#include "fexora/store/FolderMonitor.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

#include <gtest/gtest.h>

#include "fexora/platform/files/ContainerFolder.h"

#include "tests/support/Pump.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora::test {
namespace {

class FolderMonitorTest : public testing::Test {
 protected:
  void write() { writeFile(folder_ / "file", "x"); }
  // The calls since the last time.
  int calls() {
    pump(RunLoop::process());
    return std::exchange(calls_, 0);
  }

  const ScratchFolder folder_;
  int calls_ = 0;
  std::optional<FolderMonitor> monitor_{std::in_place, folder_.path(), [this] { ++calls_; }};
};

TEST_F(FolderMonitorTest, New_IsRunning) {
  write();
  EXPECT_EQ(calls(), 1);
  const std::string temporary = folder_ / (std::string(kOwnPrefix) + "new");
  writeFile(temporary, "y");
  EXPECT_EQ(calls(), 0);
  std::filesystem::rename(temporary, folder_ / "file");
  EXPECT_EQ(calls(), 1);
}

TEST_F(FolderMonitorTest, StartWhileOnAndStopWhileOff_ChangeNothing) {
  monitor_->start();
  write();
  EXPECT_EQ(calls(), 1);
  monitor_->stop();
  monitor_->stop();
  monitor_->start();
  EXPECT_EQ(calls(), 0);
  write();
  EXPECT_EQ(calls(), 1);
}

TEST_F(FolderMonitorTest, ChangesWhileOff_ComeAsOneCallAfterStart) {
  monitor_->stop();
  write();
  EXPECT_EQ(calls(), 0);
  write();
  EXPECT_EQ(calls(), 0);
  // Not yet seen by the loop.
  write();
  monitor_->start();
  EXPECT_EQ(calls_, 0) << "not from inside start()";
  EXPECT_EQ(calls(), 1);
  // Only unseen ones.
  monitor_->stop();
  write();
  monitor_->start();
  EXPECT_EQ(calls(), 1);
  // A change that the loop had not delivered before the stop.
  write();
  monitor_->stop();
  EXPECT_EQ(calls(), 0);
  monitor_->start();
  monitor_->stop();
  EXPECT_EQ(calls(), 0);
  monitor_->start();
  EXPECT_EQ(calls(), 1);
}

TEST_F(FolderMonitorTest, Gone_CallsNoMore) {
  write();
  monitor_.reset();
  EXPECT_EQ(calls(), 0);
  monitor_.emplace(folder_.path(), [this] { ++calls_; });
  monitor_->stop();
  write();
  EXPECT_EQ(calls(), 0);
  monitor_.reset();
  EXPECT_EQ(calls(), 0) << "while off";
  monitor_.emplace(folder_.path(), [this] { ++calls_; });
  monitor_->stop();
  write();
  EXPECT_EQ(calls(), 0);
  monitor_->start();
  monitor_.reset();
  EXPECT_EQ(calls(), 0) << "with a call on its way";
}

TEST_F(FolderMonitorTest, HandlerMayStopOrDestroyTheMonitor) {
  monitor_.emplace(folder_.path(), [this] {
    ++calls_;
    monitor_->stop();
  });
  write();
  EXPECT_EQ(calls(), 1);
  write();
  EXPECT_EQ(calls(), 0);
  monitor_.emplace(folder_.path(), [this] {
    monitor_.reset();
    ++calls_;
  });
  write();
  EXPECT_EQ(calls(), 1);
  EXPECT_FALSE(monitor_.has_value());
}

// Gives no watch as long as it is told so.
class ScarceFolderWatch final : public FolderWatch {
 public:
  std::unique_ptr<Watch> watch(const std::string& folder, const std::string& ignoredPrefix,
                               std::function<void()> changed) override {
    return isScarce ? nullptr
                    : FolderWatch::process().watch(folder, ignoredPrefix, std::move(changed));
  }
  bool isScarce = true;
};

TEST_F(FolderMonitorTest, NoWatchLeft_IsInertUntilStartedAgain) {
  ScarceFolderWatch watch;
  Platform platform = Platform::process();
  platform.folderWatch = &watch;
  monitor_.emplace(
      folder_.path(), [this] { ++calls_; }, platform);
  write();
  EXPECT_EQ(calls(), 0);
  watch.isScarce = false;
  monitor_->stop();
  monitor_->start();
  EXPECT_EQ(calls(), 0);
  write();
  EXPECT_EQ(calls(), 1);
  monitor_.reset();
}

}  // namespace
}  // namespace fexora::test
