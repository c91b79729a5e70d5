// The shared file's protocol on a virtual clock: real files, a folder watch in the test's hand.
#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "fexora/fexora.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/network/LazyTransport.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"

#include "tests/support/VirtualPlatform.h"

namespace fexora {
namespace {

using test::readFile;
using test::writeFile;

Dictionary fileContent(const std::string& path) {
  const auto read = readPropertyList(readFile(path));
  EXPECT_TRUE(read.ok()) << read.error;
  return read.value.dictionary() != nullptr ? *read.value.dictionary() : Dictionary();
}

class UserStore : public testing::Test {
 protected:
  void otherProcessWrites(const Dictionary& content) {
    writeFile(container.file(), writePropertyList(content).bytes);
  }
  std::size_t names() const {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(container.path()), {}));
  }

  test::TestContainer container;
  test::VirtualPlatform desktop;
  int updates = 0;
  NotificationCenter::Token token =
      desktop.notifications.addObserver(fileWatcherUpdate, [this] { ++updates; });
};

TEST_F(UserStore, FirstStart_MakesAnEmptyFileAndIgnoresItsOwnEvent) {
  StoreManager store(desktop.platform);
  EXPECT_TRUE(fileContent(container.file()).empty());
  EXPECT_EQ(desktop.log.lines, std::vector<std::string>{"SAVE SUCCESS"});
  EXPECT_TRUE(store.skipUpdate());
  desktop.watch.change();
  EXPECT_EQ(updates, 0);
  desktop.loop.advance(1.0);
  EXPECT_FALSE(store.skipUpdate());
  EXPECT_EQ(names(), 1U);
  struct stat status {};
  ASSERT_EQ(stat(container.file().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(UserStore, ChangeOutsideTheSkipPeriod_ReplacesAllAndThenNotifies) {
  StoreManager store(desktop.platform);
  store.setUd(Dictionary{{"unsaved", 1}});
  desktop.loop.advance(1.0);
  std::int64_t seen = 0;
  const auto observer =
      desktop.notifications.addObserver(fileWatcherUpdate, [&] { seen = store.fraction(); });
  otherProcessWrites(Dictionary{{"Fraction", 7}});
  desktop.watch.change();
  EXPECT_EQ(store.ud(), (Dictionary{{"Fraction", 7}}));
  EXPECT_EQ(seen, 7);
  EXPECT_EQ(updates, 1);
  EXPECT_EQ(fileContent(container.file()).size(), 1U) << "nothing is written back";
}

TEST_F(UserStore, SavesHalfASecondApart_SkipUntilASecondAfterTheLast) {
  StoreManager store(desktop.platform);
  store.synchronize();
  desktop.loop.advance(0.5);
  store.synchronize();
  desktop.loop.advance(0.75);
  EXPECT_TRUE(store.skipUpdate());
  otherProcessWrites(Dictionary{{"Fraction", 7}});
  desktop.watch.change();
  EXPECT_EQ(store.fraction(), 3);
  desktop.loop.advance(0.25);
  EXPECT_FALSE(store.skipUpdate());
  EXPECT_EQ(updates, 0) << "what came inside the period is missed";
}

TEST_F(UserStore, ReconcilingStore_TakesOverWhatItMissed) {
  StoreManager store(desktop.platform);
  store.setReconcilesAfterSkip(true);
  store.synchronize();
  otherProcessWrites(Dictionary{{"Fraction", 7}});
  desktop.watch.change();
  desktop.loop.advance(1.0);
  EXPECT_EQ(store.fraction(), 7);
  EXPECT_EQ(updates, 1);
  store.synchronize();
  desktop.loop.advance(5.0);
  EXPECT_EQ(updates, 1) << "its own write is no news";
}

TEST_F(UserStore, ThreeDeferredSaves_WriteOnceASecondAfterTheLast) {
  StoreManager store(desktop.platform);
  desktop.loop.advance(1.0);
  desktop.log.lines.clear();
  for (int i = 0; i < 3; ++i) {
    store.startSyncTimer();
    desktop.loop.advance(0.3);
  }
  desktop.loop.advance(0.65);
  EXPECT_EQ(desktop.log.count("SAVE"), 0);
  desktop.loop.advance(0.1);
  EXPECT_EQ(desktop.log.count("SAVE SUCCESS"), 1);
  desktop.loop.advance(10);
  EXPECT_EQ(desktop.log.count("SAVE SUCCESS"), 1);
}

TEST_F(UserStore, TimersThatTheHostReplaced_EndAllTheSame) {
  {
    StoreManager store(desktop.platform);
    store.startSyncTimer();
    store.setTimer(nullptr);
    store.setSyncTimer(nullptr);
    EXPECT_EQ(store.timer(), nullptr);
    EXPECT_EQ(store.syncTimer(), nullptr);
    desktop.loop.advance(0.5);
    store.startSyncTimer();
    store.synchronize();
    EXPECT_EQ(desktop.loop.timers(), 2U) << "a restart ends the one before";
    desktop.log.lines.clear();
    desktop.loop.advance(0.75);
    EXPECT_EQ(desktop.log.count("SAVE"), 0);
    EXPECT_TRUE(store.skipUpdate());
    desktop.loop.advance(0.25);
    EXPECT_EQ(desktop.log.count("SAVE SUCCESS"), 1);
    store.startSyncTimer();
    store.setTimer(nullptr);
    store.setSyncTimer(nullptr);
  }
  EXPECT_EQ(desktop.loop.timers(), 0U) << "none outlives the store";
  // An observer of what a timer leads to may end the store.
  auto store = std::make_unique<StoreManager>(desktop.platform);
  store->setReconcilesAfterSkip(true);
  store->synchronize();
  otherProcessWrites(Dictionary{{"Fraction", 7}});
  const auto end =
      desktop.notifications.addObserver(fileWatcherUpdate, [&store] { store.reset(); });
  desktop.loop.advance(5.0);
  EXPECT_EQ(store, nullptr);
  EXPECT_EQ(desktop.loop.timers(), 0U);
}

TEST_F(UserStore, DeferredSave_IsTakenForTheOtherProcesss) {
  StoreManager store(desktop.platform);
  desktop.loop.advance(1.0);
  store.setUd(Dictionary{{"Fraction", 5}});
  store.startSyncTimer();
  desktop.loop.advance(1.0);
  EXPECT_FALSE(store.skipUpdate());
  desktop.watch.change();
  EXPECT_EQ(store.fraction(), 5) << "its own file was read again";
  EXPECT_EQ(updates, 1);
  // Within a second of a save it is ignored, and the second starts anew.
  store.synchronize();
  desktop.loop.advance(0.5);
  store.syncFromTimer(nullptr);
  desktop.loop.advance(0.75);
  EXPECT_TRUE(store.skipUpdate());
  store.disableSkipFileUpdate(nullptr);
  EXPECT_FALSE(store.skipUpdate());
}

TEST_F(UserStore, UnreadableFile_KeepsTheContentAndIsKeptAside) {
  StoreManager store(desktop.platform);
  store.setFraction(6);
  desktop.loop.advance(1.0);
  for (const std::string damage : {"", "nonsense", "<plist version=\"1.0\"><array/></plist>"}) {
    writeFile(container.file(), damage);
    desktop.watch.change();
    EXPECT_EQ(store.fraction(), 6);
    EXPECT_NE(store.loadProblem().find(container.file()), std::string::npos);
  }
  store.setFraction(8);
  EXPECT_EQ(store.saveProblem(), "");
  EXPECT_EQ(fileContent(container.file()).find("Fraction")->number()->intValue(), 8);
  EXPECT_EQ(names(), 2U);
  for (const auto& entry : std::filesystem::directory_iterator(container.path())) {
    const std::string name = entry.path().filename().string();
    if (name == "Store.plist") continue;
    EXPECT_TRUE(name.starts_with(".fexora-unreadable-")) << name;
    EXPECT_EQ(readFile(entry.path().string()), "<plist version=\"1.0\"><array/></plist>");
  }
  store.setFraction(9);
  EXPECT_EQ(names(), 2U) << "a readable file is not kept";
}

TEST_F(UserStore, ManyUnreadableFiles_OnlyTheLastFewAreKept) {
  StoreManager store(desktop.platform);
  const auto damage = [&](const std::string& bytes) {
    desktop.loop.advance(2.0);
    writeFile(container.file(), bytes);
    desktop.watch.change();
    store.synchronize();
  };
  for (int i = 0; i < 9; ++i) damage("damage " + std::to_string(i));
  EXPECT_EQ(names(), 1U + limits::kUnreadableCopies);
  // A clock that was set back does not make the newest the one to go.
  desktop.loop.setWall(0);
  damage("damage of 1970");
  EXPECT_EQ(names(), 1U + limits::kUnreadableCopies);
  EXPECT_EQ(readFile(container.path() + "/.fexora-unreadable-1970-01-01T00:00:02Z"),
            "damage of 1970");
}

TEST_F(UserStore, ValueThatNoFileCanHold_FailsTheSaveAndKeepsBoth) {
  StoreManager store(desktop.platform);
  store.setFraction(6);
  const std::string limit = std::to_string(limits::kStoreFileBytes);
  const std::pair<Value, std::string> odd[] = {
      {"a\x01b", "control characters"},
      {std::string(limits::kStoreFileBytes, 'x'), "more than the " + limit},
      {Array(8, Value(std::string(limits::kStoreFileBytes / 4, 'x'))), "more than the " + limit},
  };
  for (const auto& [value, reason] : odd) {
    desktop.log.lines.clear();
    Dictionary content = store.ud();
    content.set("odd", value);
    store.setUd(content);
    store.synchronize();
    EXPECT_EQ(desktop.log.count("SAVE FAIL"), 1);
    EXPECT_EQ(desktop.log.count(container.file()), 1);
    EXPECT_EQ(desktop.log.count(reason), 1) << store.saveProblem();
    EXPECT_EQ(store.ud(), content);
    EXPECT_EQ(fileContent(container.file()).find("Fraction")->number()->intValue(), 6);
    EXPECT_EQ(names(), 1U);
    EXPECT_TRUE(store.skipUpdate());
  }
}

TEST_F(UserStore, NoContainer_WorksInMemoryAndSaysSoOnce) {
  const test::EnvironmentVariable none("FEXORA_CONTAINER", std::nullopt);
  const test::EnvironmentVariable data("XDG_DATA_HOME", std::nullopt);
  const test::EnvironmentVariable home("HOME", std::nullopt);
  StoreManager store(desktop.platform);
  store.setFraction(5);
  store.setFraction(6);
  EXPECT_EQ(store.fraction(), 6);
  EXPECT_EQ(desktop.log.count("container"), 1);
  EXPECT_NE(store.saveProblem(), "");
  EXPECT_EQ(store.folderMonitor(), nullptr);
}

TEST_F(UserStore, ContainerOfTheHome_IsMadePrivate) {
  test::ScratchFolder home;
  const test::EnvironmentVariable none("FEXORA_CONTAINER", std::nullopt);
  const test::EnvironmentVariable data("XDG_DATA_HOME", "relative/is/no/place");
  const test::EnvironmentVariable variable("HOME", home.path());
  StoreManager store(desktop.platform);
  const std::string folder = home / (".local/share/" + std::string(kAppGroupIdentifier));
  EXPECT_EQ(store.applicationDocumentsDirectory(), folder);
  struct stat status {};
  ASSERT_EQ(stat(folder.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(UserStore, RelativeContainer_StaysWhereItWas) {
  const test::ScratchFolder here;
  const std::string before = std::filesystem::current_path();
  std::filesystem::current_path(here.path());
  const test::EnvironmentVariable variable("FEXORA_CONTAINER", "inner/folder");
  StoreManager store(desktop.platform);
  std::filesystem::current_path("/");
  store.setFraction(4);
  const StoreManager other(desktop.platform);
  std::filesystem::current_path(before);
  EXPECT_EQ(store.fileURL(), here / "inner/folder/Store.plist");
  EXPECT_EQ(other.fraction(), 4);
  EXPECT_EQ(processNetOptions().container, here / "inner/folder");
}

TEST_F(UserStore, PathsThatAreSet_AreUsed) {
  test::ScratchFolder elsewhere;
  StoreManager store(desktop.platform);
  EXPECT_EQ(store.fileURL(), container.file());
  store.setFileURL(elsewhere / "Other.plist");
  store.setFraction(4);
  EXPECT_EQ(fileContent(elsewhere / "Other.plist").find("Fraction")->number()->intValue(), 4);
  writeFile(elsewhere / "Third.plist", writePropertyList(Dictionary{{"Fraction", 9}}).bytes);
  store.setFileURL(elsewhere / "Third.plist");
  store.loadData();
  EXPECT_EQ(store.fraction(), 9);
  store.setApplicationDocumentsDirectory(elsewhere.path());
  EXPECT_EQ(store.applicationDocumentsDirectory(), elsewhere.path());
  EXPECT_EQ(store.fileURL(), elsewhere / "Third.plist");
}

TEST_F(UserStore, MembersByName_AndNothingElse) {
  StoreManager store(desktop.platform);
  EXPECT_EQ(store.valueForKey("storeName"), Value("Store.plist"));
  EXPECT_EQ(store.valueForKey("skipUpdate"), Value(true));
  EXPECT_TRUE(store.setValueForKey("ud", Dictionary{{"Fraction", 5}}));
  EXPECT_EQ(store.perform("synchronize"), Value());
  EXPECT_EQ(store.perform("loadData"), Value());
  EXPECT_EQ(store.fraction(), 5);
  EXPECT_EQ(store.perform("disableSkipFileUpdate:", {Value()}), Value());
  EXPECT_FALSE(store.skipUpdate());
  EXPECT_EQ(store.perform("disableSkipFileUpdate:"), std::nullopt);
  EXPECT_EQ(store.perform("saveSettings"), std::nullopt);
  EXPECT_EQ(store.valueForKey("canSave"), std::nullopt);
  EXPECT_FALSE(store.setValueForKey("storeName", "x"));
}

TEST_F(UserStore, TemporariesOfTheDead_GoAtTheNextStart) {
  writeFile(container.path() + "/.fexora-save-1", "left by a killed process");
  StoreManager store(desktop.platform);
  EXPECT_EQ(names(), 1U);
}

}  // namespace
}  // namespace fexora
