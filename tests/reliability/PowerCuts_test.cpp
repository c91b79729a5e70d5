// What a power cut can leave of the store, at every moment of a first start and some saves.
//
// Judged by one rule: the file is missing only if no save was reported as done yet; otherwise it
// holds, whole, either the last content that was reported as saved or the one being saved.
#include <memory>

#include <gtest/gtest.h>

#include "tests/reliability/SystemCallTrace.h"
#include "tests/support/CrashDisk.h"
#include "tests/support/ForwardingFiles.h"
#include "tests/support/StoreWorld.h"

namespace fexora::test {
namespace {

// The control: answers that it has flushed all files, or all folders, and has not.
class Unflushed final : public ForwardingFiles {
 public:
  Unflushed(Files& below, FileStatus::Type without) : ForwardingFiles(below), without_(without) {}

 private:
  std::optional<std::error_code> enter(std::string_view operation,
                                       const std::string& path) override {
    const bool isFile = path.find("/.fexora-save-") != std::string::npos;
    const bool isMeant = isFile == (without_ == FileStatus::Type::file);
    return operation == "flush" && isMeant ? std::optional(std::error_code()) : std::nullopt;
  }

  FileStatus::Type without_;
};

// The number of a save is its "Fraction"; the file that a first start makes has none, and counts as
// number 0. Nothing when the bytes are no dictionary.
std::optional<std::int64_t> numberIn(const std::string& bytes) {
  const auto read = readPropertyList(bytes);
  if (!read.ok() || read.value.dictionary() == nullptr) return std::nullopt;
  return fractionOf(*read.value.dictionary());
}

// Counts what the cuts leave, against what was reported.
class Judge {
 public:
  explicit Judge(std::string path) : path_(std::move(path)) {}

  void watch(CrashDisk& disk) {
    disk.setObserver([this, &disk] { cut(disk); });
  }
  void reported(std::int64_t number) { reported_ = number; }
  void saving(std::int64_t number) { saving_ = number; }

  void cut(const CrashDisk& disk) {
    disk.powerCuts([this](CrashDisk& left) { judge(left); });
  }

  int states = 0;
  int torn = 0;
  int lost = 0;
  int leftovers = 0;

 private:
  void judge(CrashDisk& left) {
    ++states;
    const auto bytes = left.content(path_);
    if (!bytes) {
      lost += reported_ >= 0 ? 1 : 0;
    } else if (const auto number = numberIn(*bytes)) {
      lost += *number < reported_ ? 1 : 0;
      EXPECT_LE(*number, saving_);
    } else {
      ++torn;
    }
    restart(left);
  }

  // A start after the cut clears up and saves.
  void restart(CrashDisk& left) {
    VirtualPlatform desktop(left);
    StoreManager store(desktop.platform);
    store.setFraction(1000);
    EXPECT_EQ(store.saveProblem(), "");
    EXPECT_EQ(numberIn(left.content(path_).value_or("")), 1000);
    const auto names = left.list(path_.substr(0, path_.rfind('/')));
    for (const std::string& name : *names) leftovers += name.starts_with(".fexora-save-") ? 1 : 0;
  }

  std::string path_;
  std::int64_t reported_ = -1;
  std::int64_t saving_ = 0;
};

class PowerCuts : public testing::Test {
 protected:
  static constexpr const char* kFolder = "/home/data/container";

  void run(CrashDisk& disk, Files& files, int saves) {
    VirtualPlatform desktop(files);
    judge_.watch(disk);
    StoreManager store(desktop.platform);
    if (store.saveProblem().empty()) judge_.reported(store.ud().empty() ? 0 : store.fraction());
    for (int number = 1; number <= saves; ++number) {
      judge_.saving(number);
      store.setFraction(number);
      EXPECT_EQ(store.saveProblem(), "");
      judge_.reported(number);
      judge_.cut(disk);
    }
  }

  const EnvironmentVariable container_{"FEXORA_CONTAINER", kFolder};
  const std::string path_ = std::string(kFolder) + "/Store.plist";
  Judge judge_{path_};
};

TEST_F(PowerCuts, FirstStartInANewFolderAndSaves_LoseNothingReported) {
  CrashDisk disk(120);
  run(disk, disk, 5);
  RecordProperty("states", judge_.states);
  EXPECT_GT(judge_.states, 1000);
  EXPECT_EQ(judge_.torn, 0);
  EXPECT_EQ(judge_.lost, 0);
  EXPECT_EQ(judge_.leftovers, 0);
}

TEST_F(PowerCuts, UnreadableFileKeptAside_IsNeverLostWithoutItsCopy) {
  CrashDisk disk(150);
  for (const char* folder : {"/home", "/home/data", kFolder}) disk.makeFolder(folder, 0700);
  disk.put(path_, "damage");
  // Until the first save is done the damage stands, here or aside.
  VirtualPlatform desktop(disk);
  StoreManager store(desktop.platform);
  int states = 0;
  disk.setObserver([&] {
    disk.powerCuts([&](CrashDisk& left) {
      const auto bytes = left.content(path_);
      if (!bytes) return;  // the folder itself was not flushed above
      ++states;
      bool isThere = false;
      const auto names = left.list(kFolder);
      for (const std::string& name : *names) {
        isThere = isThere || left.content(std::string(kFolder) + "/" + name) == "damage";
      }
      EXPECT_TRUE(isThere || numberIn(*bytes));
      EXPECT_TRUE(*bytes == "damage" || numberIn(*bytes));
    });
  });
  store.setFraction(5);
  EXPECT_EQ(store.saveProblem(), "");
  EXPECT_GT(states, 50);
}

TEST_F(PowerCuts, WithoutTheFilesFlush_TearTheFile) {
  CrashDisk disk(300);
  Unflushed files(disk, FileStatus::Type::file);
  run(disk, files, 2);
  EXPECT_GT(judge_.torn, 0);
}

TEST_F(PowerCuts, WithoutTheFoldersFlush_LoseWhatWasReported) {
  CrashDisk disk(300);
  Unflushed files(disk, FileStatus::Type::folder);
  run(disk, files, 2);
  EXPECT_GT(judge_.lost, 0);
}

// The same, over what a real process asks of the real system: the double above cannot drift.
TEST_F(PowerCuts, OfTheRealSystemCalls_LoseNothingReported) {
  const ScratchFolder scratch;
  const std::string folder = scratch / "container";
  const EnvironmentVariable container("FEXORA_CONTAINER", folder);
  const std::string saver = std::string(FEXORA_TEST_BINARY_DIR) + "/bin/reliability_saver";
  const auto calls = traceOf({saver, "save", "3"});
  if (!calls) GTEST_SKIP() << "this system does not let a process be traced: nothing is proven";

  CrashDisk disk;
  for (std::size_t slash = folder.find('/', 1); slash != std::string::npos;
       slash = folder.find('/', slash + 1)) {
    disk.makeFolder(folder.substr(0, slash), 0755);
    disk.flush(*disk.openFolder(folder.substr(0, folder.rfind('/', slash - 1))));
  }
  Judge judge(folder + "/Store.plist");
  judge.watch(disk);
  std::int64_t reported = -1;
  play(*calls, folder, disk, [&](std::string_view text) {
    EXPECT_EQ(text.find("SAVE FAIL"), std::string_view::npos) << text;
    if (text.find("SAVE SUCCESS") == std::string_view::npos) return;
    judge.reported(++reported);
    judge.cut(disk);
    judge.saving(reported + 1);
  });
  EXPECT_EQ(reported, 3);
  RecordProperty("states", judge.states);
  EXPECT_GT(judge.states, 50);
  EXPECT_EQ(judge.torn, 0);
  EXPECT_EQ(judge.lost, 0);
  EXPECT_EQ(judge.leftovers, 0);
}

}  // namespace
}  // namespace fexora::test
