// A real process whose system calls fail by the tracer's hand: the calls themselves, below every
// seam of ours.
#include <filesystem>

#include <gtest/gtest.h>

#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"
#include "fexora/platform/values/Value.h"
#include "fexora/store/StoreManager.h"

#include "tests/reliability/SystemCallTrace.h"
#include "tests/support/Command.h"
#include "tests/support/FaultServer.h"
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
                    const std::vector<std::string>& job,
                    const std::vector<std::string>& filter = {}) const {
    // Nothing of all this may hang.
    std::vector<std::string> words{"/usr/bin/timeout",
                                   "25",
                                   "/usr/bin/strace",
                                   "-E",
                                   kNoLeakSearch,
                                   "-E",
                                   "FEXORA_RATES_URL=" + server_.address("/rates.json"),
                                   "-E",
                                   "XDG_CACHE_HOME=" + container_.path() + "/cache",
                                   "-f",
                                   "-o",
                                   "/dev/null",
                                   "-e",
                                   "trace=" + call,
                                   "-e",
                                   "inject=" + call + ":error=" + error + ":when=" + when};
    words.insert(words.end(), filter.begin(), filter.end());
    words.push_back(FEXORA_TEST_BINARY_DIR "/bin/reliability_saver");
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

  // Asks the service while `calls` fail: the rates come whole or not at all, and what the process
  // says of them is so.
  void refreshWithout(const std::vector<std::string>& calls) {
    server_.reply("/rates.json", answer(R"({"rates": [{"code": "EUR", "rate": 0.5}]})", kTag));
    for (const std::string& call : calls) {
      for (const std::string error : kErrors) {
        for (const std::string when : {"1", "1+"}) {
          SCOPED_TRACE(testing::Message() << call << " " << error << " " << when);
          // All that waits for anything waits in this call.
          if (call == "poll" && when == "1+") continue;
          std::filesystem::remove_all(container_.path() + "/cache");
          writeOld();
          checkRefresh(run(call, error, when, {"refresh"}));
          if (HasFailure()) return;
        }
      }
    }
  }
  void checkRefresh(const CommandResult& result) {
    const bool isSaved = result.output == "rates 1\n" && result.exitCode == 0;
    const bool isTold =
        result.output.starts_with("error ") || result.errors.find("SAVE FAIL") != std::string::npos;
    EXPECT_NE(isSaved, isTold) << result.exitCode << result.output << result.errors;
    (isSaved ? saved_ : failed_) += 1;
    EXPECT_EQ(fraction(), 6);
    const auto content = readPropertyList(readFile(container_.file())).value;
    const bool isDoubted = result.errors.find("may not survive") != std::string::npos;
    EXPECT_EQ(content.dictionary()->find(kUDUSDRates) != nullptr, isSaved || isDoubted);
    for (const auto& entry : std::filesystem::directory_iterator(container_.path())) {
      const std::string name = entry.path().filename();
      EXPECT_TRUE(name == "Store.plist" || name == "cache") << name;
    }
  }

  static constexpr const char* kTag = "ETag: \"one\"\r\n";
  const TestContainer container_{};
  FaultServer server_;
  int saved_ = 0;
  int failed_ = 0;
};

TEST_F(InjectedCalls, OfASave_EndInSuccessOrInAKeptFile) {
  int failures = 0;
  for (const std::string call : {"fsync", "rename", "flock", "fchmod", "getdents64", "mkdir"}) {
    for (const std::string error : kErrors) {
      for (const std::string when : {"1", "1+", "2"}) {
        SCOPED_TRACE(testing::Message() << call << " " << error << " " << when);
        writeOld();
        const auto result = run(call, error, when, {"save", "1"});
        const bool isSaved = result.errors.find("SAVE SUCCESS") != std::string::npos;
        EXPECT_EQ(result.exitCode, isSaved ? 0 : 1) << result.errors;
        const bool isDoubted = result.errors.find("may not survive") != std::string::npos;
        EXPECT_EQ(fraction(), isSaved || isDoubted ? 7 : 6) << result.errors;
        EXPECT_EQ(result.output, isSaved ? "6\n7\n" : "6\n");
        EXPECT_TRUE(isSaved || result.errors.find(container_.file()) != std::string::npos);
        EXPECT_TRUE(isSaved || error != "EINTR" || when == "1+" || call == "fsync") << "made again";
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
      SCOPED_TRACE(testing::Message() << call << " " << error);
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

TEST_F(InjectedCalls, OfTheWatchsReading_BeginAnotherWatch) {
  for (const std::string error : kErrors) {
    for (const std::string when : {"1", "1+"}) {
      SCOPED_TRACE(testing::Message() << error << " " << when);
      writeOld();
      const auto result = run("read", error, when, {"watch"}, {"-P", "anon_inode:inotify"});
      EXPECT_EQ(result.output, "7\n8\n") << result.errors;
      // An interrupted reading is made again, within bounds.
      const bool isSaid = result.errors.find("could not be watched: ") != std::string::npos;
      EXPECT_EQ(isSaid, error != "EINTR" || when == "1+") << result.errors;
      if (HasFailure()) return;
    }
  }
}

TEST_F(InjectedCalls, OfARequest_EndItWithAnError) {
  refreshWithout({"clone3", "socket", "connect", "sendto", "recvfrom", "poll", "getsockopt",
                  "setsockopt", "getsockname", "getpeername", "fcntl", "socketpair", "eventfd2"});
  EXPECT_GT(failed_, 60) << "the tracer did what it was asked";
  EXPECT_GT(saved_, 60);
}

TEST_F(InjectedCalls, OfWhatIsKeptAfterARequest_LeaveTheAnswerOrSaySo) {
  refreshWithout({"fsync", "rename", "flock", "fchmod", "getdents64", "mkdir"});
  EXPECT_GT(failed_, 20) << "the tracer did what it was asked";
  EXPECT_GT(saved_, 20);
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
