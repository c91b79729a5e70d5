// What a power cut can leave of the store, at every moment of a first start and some saves.
//
// Judged by one rule: the file is missing only if no save was reported as done yet; otherwise it
// holds, whole, either the last content that was reported as saved or the one being saved.
#include <optional>

#include <gtest/gtest.h>

#include "tests/support/CrashDisk.h"
#include "tests/support/FaultyFiles.h"
#include "tests/support/StoreWorld.h"

namespace fexora::test {
namespace {

// The number of a save is its "Fraction"; the file that a first start makes has none, and counts as
// number 0. Nothing when the bytes are no dictionary.
std::optional<std::int64_t> numberIn(const std::string& bytes) {
  const auto read = readPropertyList(bytes);
  if (!read.ok() || read.value.dictionary() == nullptr) return std::nullopt;
  return fractionOf(*read.value.dictionary());
}

class PowerCuts : public testing::Test {
 protected:
  static constexpr const char* kFolder = "/home/data/container";
  static constexpr const char* kUnreadable = "damage";

  // A first start and some saves, with every cut judged on the way.
  void run(CrashDisk& disk, Files& files, int saves) {
    reported_ = -1;
    saving_ = torn_ = lost_ = 0;
    VirtualPlatform desktop(files);
    const auto cut = [&] { disk.powerCuts([this](CrashDisk& left) { judge(left); }); };
    disk.setObserver(cut);
    StoreManager store(desktop.platform);
    reported_ = disk.content(path_) == kUnreadable || !store.saveProblem().empty() ? -1 : 0;
    for (saving_ = 1; saving_ <= saves; ++saving_) {
      store.setFraction(saving_);
      EXPECT_EQ(store.saveProblem(), "");
      reported_ = saving_;
      cut();
    }
  }
  void judge(CrashDisk& left) {
    ++states_;
    const auto bytes = left.content(path_);
    const auto number = bytes && *bytes != kUnreadable ? numberIn(*bytes) : -1;
    torn_ += number ? 0 : 1;
    lost_ += number && *number < reported_ ? 1 : 0;
    EXPECT_LE(number, saving_);
    // A start after the cut clears up and saves.
    VirtualPlatform desktop(left);
    StoreManager store(desktop.platform);
    store.setFraction(1000);
    EXPECT_EQ(store.saveProblem(), "");
    EXPECT_EQ(numberIn(left.content(path_).value_or("")), 1000);
    const auto names = left.list(kFolder);
    for (const std::string& name : *names) leftovers_ += name.starts_with(".fexora-save-") ? 1 : 0;
  }

  const EnvironmentVariable container_{"FEXORA_CONTAINER", kFolder};
  const std::string path_ = std::string(kFolder) + "/Store.plist";
  std::int64_t reported_ = -1;
  int saving_ = 0;
  int states_ = 0;
  int torn_ = 0;
  int lost_ = 0;
  int leftovers_ = 0;
};

TEST_F(PowerCuts, FirstStartInANewFolderAndSaves_LoseNothingReported) {
  CrashDisk disk(120);
  run(disk, disk, 5);
  RecordProperty("states", states_);
  EXPECT_GT(states_, 1000);
  EXPECT_EQ(torn_, 0);
  EXPECT_EQ(lost_, 0);
  EXPECT_EQ(leftovers_, 0);
}

// The control: files, or folders, that are said to be flushed and are not.
TEST_F(PowerCuts, WithoutAFlush_TearTheFileOrLoseWhatWasReported) {
  for (const bool isFile : {true, false}) {
    CrashDisk disk(300);
    FaultyFiles files(disk);
    files.fail(0, [isFile](std::size_t, const auto& call) {
      return call.operation == "flush" &&
             (call.path.find("/.fexora-save-") != std::string::npos) == isFile;
    });
    run(disk, files, 2);
    EXPECT_GT(isFile ? torn_ : lost_, 0);
  }
}

TEST_F(PowerCuts, UnreadableFile_StaysUntilTheSaveThatReplacesIt) {
  CrashDisk disk(150);
  for (const char* folder : {"/home", "/home/data", kFolder}) disk.makeFolder(folder, 0700);
  for (const char* folder : {"/", "/home", "/home/data"}) disk.flush(*disk.openFolder(folder));
  disk.put(path_, kUnreadable);
  run(disk, disk, 2);
  EXPECT_GT(states_, 50);
  EXPECT_EQ(torn_, 0);
  EXPECT_EQ(lost_, 0);
}

}  // namespace
}  // namespace fexora::test
