// A real process whose system calls fail by the tracer's hand: the calls themselves, below every
// seam of ours.
#include <gtest/gtest.h>

#include "fexora/platform/foundation/Value.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"

#include "tests/reliability/SystemCallTrace.h"
#include "tests/support/Command.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora::test {
namespace {

constexpr const char* kErrors[] = {"EACCES", "EIO",    "EMFILE", "ENFILE", "ENOMEM",
                                   "EINTR",  "ENOSPC", "EDQUOT", "EROFS"};

class InjectedCalls : public testing::Test {
 protected:
  void SetUp() override {
    if (!canTrace()) GTEST_SKIP() << "this system lets no process be traced: nothing is proven";
  }

  CommandResult run(const std::string& call, const std::string& error, const std::string& when,
                    const std::vector<std::string>& job) const {
    std::vector<std::string> words{"/usr/bin/strace",
                                   "-E",
                                   kNoLeakSearch,
                                   "-f",
                                   "-o",
                                   "/dev/null",
                                   "-e",
                                   "trace=" + call,
                                   "-e",
                                   "inject=" + call + ":error=" + error + ":when=" + when,
                                   std::string(FEXORA_TEST_BINARY_DIR) + "/bin/reliability_saver"};
    words.insert(words.end(), job.begin(), job.end());
    return runCommand(words);
  }
  void writeOld() const {
    writeFile(container_.file(), writePropertyList(Dictionary{{"Fraction", 6}}).bytes);
  }
  std::int64_t fraction() const {
    const auto read = readPropertyList(readFile(container_.file()));
    EXPECT_TRUE(read.ok()) << read.error;
    return read.ok() ? read.value.dictionary()->find("Fraction")->number()->intValue() : 0;
  }

  const TestContainer container_{};
};

TEST_F(InjectedCalls, OfASave_EndInSuccessOrInAKeptFile) {
  int failures = 0;
  for (const std::string call : {"fsync", "rename", "flock", "fchmod", "getdents64", "mkdir"}) {
    for (const std::string error : kErrors) {
      for (const std::string when : {"1", "1+", "2"}) {
        SCOPED_TRACE(call + " " + error + " " + when);
        writeOld();
        const auto result = run(call, error, when, {"save", "1"});
        const bool isSaved = result.errors.find("SAVE SUCCESS") != std::string::npos;
        EXPECT_EQ(result.exitCode, isSaved ? 0 : 1) << result.errors;
        const bool isDoubted = result.errors.find("may not survive") != std::string::npos;
        EXPECT_EQ(fraction(), isSaved || isDoubted ? 7 : 6) << result.errors;
        EXPECT_EQ(result.output, isSaved ? "6\n7\n" : "6\n");
        EXPECT_TRUE(isSaved || result.errors.find(container_.file()) != std::string::npos);
        failures += isSaved ? 0 : 1;
        if (HasFailure()) return;
      }
    }
  }
  EXPECT_GT(failures, 60) << "the tracer did what it was asked";
}

TEST_F(InjectedCalls, OfTheWatch_LeaveTheStoreUnwatchedAndSaySo) {
  for (const std::string call : {"inotify_init1", "inotify_add_watch"}) {
    for (const std::string error : kErrors) {
      SCOPED_TRACE(call + " " + error);
      writeOld();
      const auto result = run(call, error, "1+", {"save", "1"});
      EXPECT_EQ(result.exitCode, 0) << result.errors;
      EXPECT_EQ(fraction(), 7);
      const bool isSaid = result.errors.find("cannot be watched") != std::string::npos ||
                          result.errors.find("waiting for it") != std::string::npos;
      EXPECT_TRUE(isSaid) << result.errors;
      if (HasFailure()) return;
    }
  }
}

TEST_F(InjectedCalls, OfTheLoopsWakeUp_AreMadeUpFor) {
  for (const std::string error : kErrors) {
    writeOld();
    const auto result = run("eventfd2", error, "1+", {"save", "1"});
    // GLib has a wake-up of its own, by a pipe where there is no eventfd.
    EXPECT_EQ(result.exitCode, 0) << error << result.errors;
    EXPECT_EQ(fraction(), 7);
  }
}

}  // namespace
}  // namespace fexora::test
