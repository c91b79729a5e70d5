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

namespace fexora::test {
namespace {

// Gives no watch as long as it is told so.
class ScarceFolderWatch final : public FolderWatch {
 public:
  std::unique_ptr<Watch> watch(const std::string& folder, const std::string& ignoredPrefix,
                               std::function<void()> changed) override {
    return isScarce ? nullptr
                    : FolderWatch::process().watch(folder, ignoredPrefix, std::move(changed));
  }
  bool isScarce = false;
};

class FolderMonitorTest : public testing::Test {
 protected:
  FolderMonitorTest() { platform_.folderWatch = &watch_; }
  void make(std::function<void()> handler) {
    monitor_.emplace(folder_.path(), std::move(handler), platform_);
  }
  // Steps, each one character: n makes a new monitor, + starts it, - stops it, x ends it; w writes
  // a file, o writes one of an own name, r renames that over the file; a digit is the number of
  // calls since the last digit.
  void play(const std::string& steps) {
    SCOPED_TRACE(steps);
    const std::string own = folder_ / (std::string(kOwnPrefix) + "new");
    for (const char step : steps) {
      const int before = calls_;
      if (step == 'n') make([this] { ++calls_; });
      if (step == '+') monitor_->start();
      if (step == '-') monitor_->stop();
      if (step == 'x') monitor_.reset();
      if (step == 'w' || step == 'o') writeFile(step == 'w' ? folder_ / "file" : own, "x");
      if (step == 'r') std::filesystem::rename(own, folder_ / "file");
      EXPECT_EQ(calls_, before) << "not from inside of " << step;
      if (step < '0' || step > '9') continue;
      pump(RunLoop::process());
      EXPECT_EQ(std::exchange(calls_, 0), step - '0');
    }
    monitor_.reset();
  }

  const ScratchFolder folder_;
  ScarceFolderWatch watch_;
  Platform platform_ = Platform::process();
  int calls_ = 0;
  std::optional<FolderMonitor> monitor_;
};

TEST_F(FolderMonitorTest, CallsWhileOn) {
  play("nw1o0r1");
  play("n+w1--+0w1");
  // Changes while off come as one call after the start, whether the loop had seen them or not.
  play("n-w0w0w+1-w+1");
  // One that the loop had not delivered before the stop waits for the next start.
  play("nw-0+-0+1");
  // None comes once it has gone: while on, while off, and with a call on its way.
  play("nwx0");
  play("n-w0x0");
  play("n-w0+x0");
}

TEST_F(FolderMonitorTest, NoWatchLeft_IsInertUntilStartedAgain) {
  watch_.isScarce = true;
  make([this] { ++calls_; });
  watch_.isScarce = false;
  play("w0-+0w1");
}

TEST_F(FolderMonitorTest, HandlerMayStopOrDestroyTheMonitor) {
  make([this] {
    ++calls_;
    monitor_->stop();
  });
  play("w1w0");
  make([this] {
    monitor_.reset();
    ++calls_;
  });
  play("w1");
}

}  // namespace
}  // namespace fexora::test
