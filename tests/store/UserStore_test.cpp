// The shared file's protocol on a virtual clock: real files, a folder watch in the test's hand.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "fexora/fexora.h"
#include "fexora/platform/base/Limits.h"

#include "tests/support/StoreWorld.h"
#include "tests/support/UnflushedFiles.h"

namespace fexora {
namespace {

using test::EnvironmentVariable;
using test::writeFile;

unsigned rightsOf(const std::string& path) {
  return Files::process().statusOf(path)->mode;
}

class UserStore : public testing::Test, protected test::StoreWorld {
 protected:
  // A store in its first skip period, as a first start leaves it.
  void startNow() { store = std::make_unique<StoreManager>(desktop.platform); }
  void damage(const std::string& bytes) {
    writeFile(container.file(), bytes);
    desktop.watch.change();
  }
  // Steps on a new store: a number lets so many seconds pass, `ud=N` and `other=N` put N under
  // "Fraction" into the dictionary and, as another process, into the file.
  void play(const std::string& steps) {
    std::istringstream all(steps);
    for (std::string step; all >> step;) {
      const int number = step.find('=') != std::string::npos ? step.back() - '0' : 0;
      if (step == "reconcile") store->setReconcilesAfterSkip(true);
      if (step == "save") store->synchronize();
      if (step == "later") store->startSyncTimer();
      if (step == "timer") store->syncFromTimer(nullptr);
      if (step == "end") store->disableSkipFileUpdate(nullptr);
      if (step == "event") desktop.watch.change();
      if (step.starts_with("ud=")) store->setUd({{"Fraction", number}});
      if (step.starts_with("other=")) write({{"Fraction", number}});
      if (std::isdigit(step[0]) != 0) desktop.loop.advance(std::stod(step));
    }
  }
};

struct Steps {
  const char* steps;
  std::int64_t fraction;  // the setting then
  std::string told;       // what it was at each notification
  bool skips;
  std::size_t saves;  // with the first start's
};

TEST_F(UserStore, KeepsToTheProtocol) {
  const Steps cases[] = {
      // The first start's own event is ignored, for a second.
      {"event", 3, "", true, 1},
      {"event 1.0", 3, "", false, 1},
      // Outside of the skip period all is replaced, then told, and nothing written back.
      {"ud=5 1.0 other=7 event", 7, "7", false, 1},
      // Saves half a second apart skip until a second after the last.
      {"save 0.5 save 0.75", 3, "", true, 3},
      {"save 0.5 save 0.75 other=7 event 0.25", 3, "", false, 3},
      // What was missed is taken over at the end when asked for; an own write is no news.
      {"reconcile save 0.5 save 0.75 other=7 event", 3, "", true, 3},
      {"reconcile save 0.5 save 0.75 other=7 event 0.25", 7, "7", false, 3},
      {"reconcile save 0.5 save 0.75 other=7 event 0.25 save 5.0", 7, "7", false, 4},
      // Deferred saves are one, a second after the last.
      {"1.0 later 0.3 later 0.3 later 0.3 0.65", 3, "", false, 1},
      {"1.0 later 0.3 later 0.3 later 0.3 0.75", 3, "", false, 2},
      {"1.0 later 0.3 later 0.3 later 0.3 0.75 10.0", 3, "", false, 2},
      // They open no skip period, so they are taken for the other process's; but they prolong one.
      {"1.0 ud=5 later 1.0", 3, "", false, 2},
      {"1.0 ud=5 later 1.0 event", 5, "5", false, 2},
      {"1.0 save 0.5 timer 0.75", 3, "", true, 3},
      {"1.0 save 0.5 timer 0.75 end", 3, "", false, 3},
  };
  std::string told;
  const auto observer = desktop.notifications.addObserver(
      fileWatcherUpdate, [&] { told += std::to_string(store->fraction()); });
  for (const auto& [steps, fraction, toldThen, skips, saves] : cases) {
    SCOPED_TRACE(steps);
    std::filesystem::remove(container.file());
    desktop.log.lines.clear();
    told.clear();
    startNow();
    play(steps);
    EXPECT_EQ(store->fraction(), fraction);
    EXPECT_EQ(told, toldThen);
    EXPECT_EQ(store->skipUpdate(), skips);
    EXPECT_EQ(desktop.log.lines, std::vector<std::string>(saves, "SAVE SUCCESS"));
    EXPECT_EQ(names().size(), 1U);
  }
}

TEST_F(UserStore, FirstStart_MakesAnEmptyPrivateFile) {
  writeFile(container.path() + "/.fexora-save-1", "left by a killed process");
  startNow();
  EXPECT_EQ(names().size(), 1U);
  EXPECT_TRUE(content().empty());
  EXPECT_EQ(rightsOf(container.file()), 0600U);
  // A reload replaces all that was there, unsaved or not.
  store->setUd({{"unsaved", 1}});
  play("1.0 other=7 event");
  EXPECT_EQ(store->ud(), content());
}

// Two stores as in two processes, on one clock; both watches see each save.
class TwoProcesses : public testing::Test, protected test::StoreWorld {
 protected:
  TwoProcesses() : StoreWorld(test::unflushedFiles()) {}
  void begin(bool reconciles) {
    std::filesystem::remove(container.file());
    other_.platform.loop = &desktop.loop;
    start();
    second = std::make_unique<StoreManager>(other_.platform);
    for (auto* one : {store.get(), second.get()}) one->setReconcilesAfterSkip(reconciles);
    desktop.loop.advance(5);
  }
  void save(StoreManager& saving, const std::string& key) {
    Dictionary now = saving.ud();
    now.set(key, 1);
    saving.setUd(now);
    saving.synchronize();
    desktop.watch.change();
    other_.watch.change();
  }

  std::unique_ptr<StoreManager> second;

 private:
  test::VirtualPlatform other_{test::unflushedFiles()};
};

// B saves into A's skip period, and A saves again, with or without having looked.
TEST_F(TwoProcesses, SavesIntoTheOthersSkipPeriod_AreLostUnlessItReconcilesInTime) {
  for (const bool reconciles : {false, true}) {
    for (const double pause : {0.25, 2.0}) {
      SCOPED_TRACE(testing::Message() << reconciles << " " << pause);
      begin(reconciles);
      save(*store, "a");
      desktop.loop.advance(0.5);
      save(*second, "b");  // A does not see it
      desktop.loop.advance(pause);
      save(*store, "c");
      Dictionary expected{{"a", 1}, {"c", 1}};
      if (reconciles && pause > 1) expected.set("b", 1);
      EXPECT_EQ(content(), expected);
      desktop.loop.advance(5);
      EXPECT_EQ(store->ud(), content());
      // Without looking again B holds on to its own where it missed A's second save.
      EXPECT_EQ(second->ud() == content(), reconciles || pause > 1);
    }
  }
}

// One every two seconds in each, the pauses exponentially distributed.
TEST_F(TwoProcesses, UpdatesAtRandom_FewerAreLostToTheOtherWhereBothReconcile) {
  constexpr int kUpdates = 800;
  int lost[2] = {};
  for (const bool reconciles : {false, true}) {
    std::mt19937_64 random;  // NOLINT(cert-msc51-cpp): the same run every time
    std::exponential_distribution<double> pause(1.0);
    begin(reconciles);
    for (int i = 0; i < kUpdates; ++i) {
      desktop.loop.advance(pause(random));
      save(random() % 2 == 0 ? *store : *second, std::to_string(i));
    }
    lost[reconciles ? 1 : 0] = kUpdates - static_cast<int>(content().size());
  }
  RecordProperty("plain", lost[0]);
  RecordProperty("reconciling", lost[1]);
  EXPECT_LT(2 * lost[1], lost[0]);
}

TEST_F(UserStore, TimersThatTheHostReplaced_EndAllTheSame) {
  const auto replaceBoth = [this] {
    store->startSyncTimer();
    store->setTimer(nullptr);
    store->setSyncTimer(nullptr);
  };
  startNow();
  replaceBoth();
  play("0.5 later save");
  EXPECT_EQ(desktop.loop.timers(), 2U) << "a restart ends the one before";
  desktop.log.lines.clear();
  play("0.75");
  EXPECT_EQ(desktop.log.count("SAVE"), 0);
  EXPECT_TRUE(store->skipUpdate());
  play("0.25");
  EXPECT_EQ(desktop.log.count("SAVE SUCCESS"), 1);
  replaceBoth();
  store.reset();
  EXPECT_EQ(desktop.loop.timers(), 0U) << "none outlives the store";
  // An observer of what a timer leads to may end the store.
  const auto end = desktop.notifications.addObserver(fileWatcherUpdate, [this] { store.reset(); });
  startNow();
  play("reconcile save other=7 5.0");
  EXPECT_EQ(store, nullptr);
  EXPECT_EQ(desktop.loop.timers(), 0U);
}

TEST_F(UserStore, UnreadableFile_KeepsTheContentAndIsKeptAside) {
  const std::string list = "<plist version=\"1.0\"><array/></plist>";
  start().setFraction(6);
  desktop.loop.advance(1.0);
  for (const std::string& bytes : {std::string(), std::string("nonsense"), list}) {
    damage(bytes);
    EXPECT_EQ(store->fraction(), 6);
    EXPECT_NE(store->loadProblem().find(container.file()), std::string::npos);
  }
  for (const int saved : {8, 9}) {
    store->setFraction(saved);
    EXPECT_EQ(store->saveProblem(), "");
    EXPECT_EQ(fraction(), saved);
    EXPECT_EQ(names().size(), 2U) << "a readable file is not kept";
    EXPECT_EQ(asides(), std::vector{list});
  }
  // Of many only the last few are kept.
  const auto saveOver = [this](const std::string& bytes) {
    desktop.loop.advance(2.0);
    damage(bytes);
    store->synchronize();
    return asides();
  };
  for (int i = 0; i < 8; ++i) saveOver("damage " + std::to_string(i));
  EXPECT_EQ(saveOver("damage 8").size(), limits::kUnreadableCopies);
  // A clock that was set back does not make the newest the one to go.
  desktop.loop.setWall(0);
  const auto kept = saveOver("damage of 1970");
  EXPECT_EQ(kept.size(), limits::kUnreadableCopies);
  EXPECT_NE(std::find(kept.begin(), kept.end(), "damage of 1970"), kept.end());
}

TEST_F(UserStore, ValueThatNoFileCanHold_IsNotSavedAndTheRestIs) {
  start().setUd({{"odd", "before"}});
  int saved = 6;
  store->setFraction(saved);
  const Value odd[] = {"a\x01b", Value(),
                       Array(8, Value(std::string(limits::kStoreFileBytes / 4, 'x')))};
  for (const Value& value : odd) {
    desktop.log.lines.clear();
    Dictionary unfit = store->ud();
    unfit.set("odd", value);
    store->setUd(unfit);
    store->setFraction(++saved);
    EXPECT_EQ(desktop.log.lines, (std::vector{std::string("SAVE FAIL"), store->saveProblem()}));
    EXPECT_NE(store->saveProblem().find(container.file() + " was not saved whole: odd"),
              std::string::npos)
        << store->saveProblem();
    EXPECT_TRUE(*store->ud().find("odd") == value);
    EXPECT_EQ(fraction(), saved);
    EXPECT_EQ(*content().find("odd"), Value("before"));
    EXPECT_TRUE(store->skipUpdate());
  }
}

TEST_F(UserStore, TheContainer_IsWhereTheEnvironmentSays) {
  const test::ScratchFolder home;
  const std::string before = std::filesystem::current_path();
  {
    // What is relative stays where it was.
    const EnvironmentVariable variable("FEXORA_CONTAINER", "inner/folder");
    std::filesystem::current_path(home.path());
    start();
    std::filesystem::current_path("/");
    store->setFraction(4);
    EXPECT_EQ(start().fraction(), 4);
    EXPECT_EQ(processNetOptions().container, home / "inner/folder");
    std::filesystem::current_path(before);
    EXPECT_EQ(store->fileURL(), home / "inner/folder/Store.plist");
  }
  const EnvironmentVariable named("FEXORA_CONTAINER", std::nullopt);
  const EnvironmentVariable data("XDG_DATA_HOME", "relative/is/no/place");
  {
    const EnvironmentVariable variable("HOME", home.path());
    const std::string folder = home / (".local/share/" + std::string(kAppGroupIdentifier));
    EXPECT_EQ(start().applicationDocumentsDirectory(), folder);
    EXPECT_EQ(rightsOf(folder), 0700U);
  }
  // With no place at all the store works in memory, and says so once.
  const EnvironmentVariable none("HOME", std::nullopt);
  start().setFraction(5);
  store->setFraction(6);
  EXPECT_EQ(store->fraction(), 6);
  EXPECT_EQ(desktop.log.count("container"), 1);
  EXPECT_NE(store->saveProblem(), "");
  EXPECT_EQ(store->folderMonitor(), nullptr);
}

TEST_F(UserStore, NamedFolder_IsTheStoresOwn) {
  const test::ScratchFolder home;
  ReadOnlyFiles readOnly;
  test::VirtualPlatform reader(readOnly);
  // Nothing is made by who only reads; what comes later is taken over.
  StoreManager read(reader.platform, nullptr, home / "a/b");
  EXPECT_FALSE(std::filesystem::exists(home / "a"));
  StoreManager(desktop.platform, nullptr, home / "a/b").setFraction(4);
  EXPECT_EQ(test::fractionOf(test::contentOf(home / "a/b/Store.plist")), 4);
  reader.loop.advance(2.0);
  reader.watch.change();
  EXPECT_EQ(read.fraction(), 4);
  for (const char* unfit : {"relative", "/dev/null"}) {
    EXPECT_NE(StoreManager(desktop.platform, nullptr, unfit).loadProblem(), "") << unfit;
  }
  // In memory every save goes well.
  StoreManager memory(desktop.platform, nullptr, "");
  memory.setFraction(7);
  EXPECT_EQ(memory.saveProblem() + memory.loadProblem() + memory.fileURL(), "");
  EXPECT_FALSE(memory.skipUpdate());
  EXPECT_EQ(names().size(), 0U);
}

TEST_F(UserStore, PathsThatAreSet_AreUsed) {
  const test::ScratchFolder elsewhere;
  start();
  store->setFileURL(elsewhere / "Other.plist");
  store->setFraction(4);
  EXPECT_EQ(test::fractionOf(test::contentOf(elsewhere / "Other.plist")), 4);
  write({{"Fraction", 9}});
  store->setFileURL(container.file());
  store->loadData();
  EXPECT_EQ(store->fraction(), 9);
  store->setApplicationDocumentsDirectory(elsewhere.path());
  EXPECT_EQ(store->applicationDocumentsDirectory(), elsewhere.path());
  EXPECT_EQ(store->fileURL(), container.file());
}

TEST_F(UserStore, MembersByName_AndNothingElse) {
  startNow();
  EXPECT_EQ(store->valueForKey("storeName"), Value("Store.plist"));
  EXPECT_EQ(store->valueForKey("skipUpdate"), Value(true));
  EXPECT_TRUE(store->setValueForKey("ud", Dictionary{{"Fraction", 5}}));
  for (const char* method : {"synchronize", "loadData"}) EXPECT_EQ(store->perform(method), Value());
  EXPECT_EQ(store->fraction(), 5);
  EXPECT_EQ(store->perform("disableSkipFileUpdate:", {Value()}), Value());
  EXPECT_FALSE(store->skipUpdate());
  for (const char* method : {"disableSkipFileUpdate:", "saveSettings"}) {
    EXPECT_EQ(store->perform(method), std::nullopt);
  }
  EXPECT_EQ(store->valueForKey("canSave"), std::nullopt);
  EXPECT_FALSE(store->setValueForKey("storeName", "x"));
}

}  // namespace
}  // namespace fexora
