// What a power cut can leave of the store, at every moment of a first start and some saves.
//
// Judged by one rule: the file is missing only if no save was reported as done yet; otherwise it
// holds, whole, either the last content that was reported as saved or the one being saved.
#include <memory>

#include <gtest/gtest.h>

#include "fexora/fexora.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"

#include "tests/support/CrashDisk.h"
#include "tests/support/ForwardingFiles.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora::test {
namespace {

// The control: answers that it has flushed, and has not.
class Unflushed final : public ForwardingFiles {
 public:
  Unflushed(Files& below, FileStatus::Type without) : ForwardingFiles(below), without_(without) {}
  std::error_code flush(Handle handle) override {
    return status(handle)->type == without_ ? std::error_code() : below().flush(handle);
  }

 private:
  FileStatus::Type without_;
};

// Counts what the cuts leave, against what was reported.
class Judge {
 public:
  explicit Judge(std::string path) : path_(std::move(path)) {}

  // Each save's number is its "Fraction"; the file that a first start makes has none, and counts
  // as number 0.
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

  static std::optional<std::int64_t> numberIn(const std::string& bytes) {
    const auto read = readPropertyList(bytes);
    if (!read.ok() || read.value.dictionary() == nullptr) return std::nullopt;
    const Value* fraction = read.value.dictionary()->find("Fraction");
    return fraction != nullptr ? fraction->number()->intValue() : 0;
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

  void run(CrashDisk& disk, Files& files, Judge& judge, int saves) {
    VirtualPlatform desktop(files);
    judge.watch(disk);
    StoreManager store(desktop.platform);
    if (store.saveProblem().empty()) judge.reported(store.ud().empty() ? 0 : store.fraction());
    for (int number = 1; number <= saves; ++number) {
      judge.saving(number);
      store.setFraction(number);
      EXPECT_EQ(store.saveProblem(), "");
      judge.reported(number);
      judge.cut(disk);
    }
  }

  const EnvironmentVariable container_{"FEXORA_CONTAINER", kFolder};
  const std::string path_ = std::string(kFolder) + "/Store.plist";
  Judge judge_{path_};
};

TEST_F(PowerCuts, FirstStartInANewFolderAndSaves_LoseNothingReported) {
  CrashDisk disk(120);
  run(disk, disk, judge_, 5);
  RecordProperty("states", judge_.states);
  EXPECT_GT(judge_.states, 1000);
  EXPECT_EQ(judge_.torn, 0);
  EXPECT_EQ(judge_.lost, 0);
  EXPECT_EQ(judge_.leftovers, 0);
}

TEST_F(PowerCuts, UnreadableFileKeptAside_IsNeverLostWithoutItsCopy) {
  CrashDisk disk(150);
  disk.makeFolder("/home", 0755);
  disk.makeFolder("/home/data", 0755);
  disk.makeFolder(kFolder, 0700);
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
      bool isThere = *bytes == "damage";
      const auto names = left.list(kFolder);
      for (const std::string& name : *names) {
        isThere = isThere || left.content(std::string(kFolder) + "/" + name) == "damage";
      }
      EXPECT_TRUE(isThere || readPropertyList(*bytes).ok());
      EXPECT_TRUE(*bytes == "damage" || readPropertyList(*bytes).ok());
    });
  });
  store.setFraction(5);
  EXPECT_EQ(store.saveProblem(), "");
  EXPECT_GT(states, 50);
}

TEST_F(PowerCuts, WithoutTheFilesFlush_TearTheFile) {
  CrashDisk disk(300);
  Unflushed files(disk, FileStatus::Type::file);
  run(disk, files, judge_, 2);
  EXPECT_GT(judge_.torn, 0);
}

TEST_F(PowerCuts, WithoutTheFoldersFlush_LoseWhatWasReported) {
  CrashDisk disk(300);
  Unflushed files(disk, FileStatus::Type::folder);
  run(disk, files, judge_, 2);
  EXPECT_GT(judge_.lost, 0);
}

}  // namespace
}  // namespace fexora::test
