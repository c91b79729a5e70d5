// Each call that a load or a save makes of the system, failing in turn, once and from then on.
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <functional>

#include <gtest/gtest.h>

#include "fexora/fexora.h"
#include "fexora/platform/base/Limits.h"

#include "tests/support/FaultyFiles.h"
#include "tests/support/StoreWorld.h"
#include "tests/support/UnflushedFiles.h"

namespace fexora {
namespace {

namespace fs = std::filesystem;

constexpr int kErrors[] = {EACCES, EIO,    EMFILE, ENFILE, ENOMEM, EINTR,
                           ENOSPC, EDQUOT, EROFS,  ESTALE, EPERM};

struct Seam {
  test::FaultyFiles real{test::unflushedFiles()};
  test::FaultyFiles files{static_cast<Files&>(real)};
};

constexpr std::int64_t kOld = 6;
constexpr std::int64_t kNew = 8;

// A store whose file holds kOld, in a folder of its own, on files that fail when told to.
struct World : Seam, test::StoreWorld {
  World() : StoreWorld(files) { write({{"Fraction", kOld}, {"other", "kept"}}); }

  // From now on there are no hard links, unless `error` is 0.
  void refuseLinks(int error) {
    real.fail(error, [error](std::size_t, const auto& call) {
      return error != 0 && call.operation == "link";
    });
  }
  // Whether one line names the path and the error.
  bool isExplained(const std::string& path, int error) const {
    const auto cause = std::error_code(error, std::generic_category()).message();
    return std::any_of(desktop.log.lines.begin(), desktop.log.lines.end(), [&](const auto& line) {
      return line.find(path) != std::string::npos && line.find(cause) != std::string::npos;
    });
  }
  bool isReplaced() const { return files.hasCall("rename", false); }
};

// Runs `check` with each call of `run` failing with each error, once and from then on. `prepare`
// comes before and does not fail.
void eachFault(const std::function<void(World&)>& prepare, const std::function<void(World&)>& run,
               const std::function<void(World&, int error, bool fromThenOn)>& check) {
  for (const int error : kErrors) {
    for (const bool fromThenOn : {false, true}) {
      for (std::size_t number = 0;; ++number) {
        World world;
        prepare(world);
        world.desktop.log.lines.clear();
        world.files.failCall(number, error, fromThenOn);
        ASSERT_NO_THROW(run(world));
        const auto& calls = world.files.calls();
        if (calls.size() <= number) {
          ASSERT_GT(number, 5U) << "no calls were made";
          break;
        }
        SCOPED_TRACE(std::string(calls[number].operation) + " is call " + std::to_string(number) +
                     ": " + std::strerror(error) + (fromThenOn ? " from then on" : " once"));
        EXPECT_EQ(world.files.openHandles(), 0U);
        check(world, error, fromThenOn);
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

void started(World& world) {
  world.start();
}

// Once one has failed, nor is anything renamed.
void noFlushIsTriedAgain(const test::FaultyFiles& files) {
  bool flushFailed = false;
  for (const auto& call : files.calls()) {
    const bool isFileFlush =
        call.operation == "flush" && call.path.find("fexora-save") != std::string::npos;
    EXPECT_FALSE(flushFailed && (isFileFlush || (call.operation == "rename" && !call.failed)));
    flushFailed = flushFailed || (isFileFlush && call.failed);
  }
}

TEST(Faults, OfASave_KeepTheOldFileAndSayWhy) {
  eachFault(
      started, [](World& world) { world.store->setFraction(kNew); },
      [](World& world, int error, bool fromThenOn) {
        const bool isSaved = world.desktop.log.count("SAVE SUCCESS") == 1;
        EXPECT_EQ(world.desktop.log.count("SAVE"), 1);
        EXPECT_EQ(isSaved, world.store->saveProblem().empty());
        EXPECT_EQ(world.store->fraction(), kNew);
        EXPECT_EQ(test::fractionOf(world.store->ud()), kNew);
        EXPECT_TRUE(world.isReplaced() || !isSaved);
        EXPECT_EQ(world.fraction(), world.isReplaced() ? kNew : kOld);
        EXPECT_EQ(*world.content().find("other"), Value("kept"));
        noFlushIsTriedAgain(world.files);
        EXPECT_LE(world.files.calls().size(), 16U);
        if (!isSaved) {
          EXPECT_TRUE(world.isExplained(world.container.file(), error));
          EXPECT_EQ(world.desktop.log.lines.size(), 2U);
        }
        // With every later call failing the temporary cannot be removed, either.
        const bool mayStay = fromThenOn && world.files.hasCall("remove", true);
        EXPECT_LE(world.names().size(), mayStay ? 2U : 1U);

        world.files.heal();
        world.store->setFraction(kNew + 1);
        EXPECT_EQ(world.store->saveProblem(), "");
        EXPECT_EQ(world.fraction(), kNew + 1);
        world.start();
        EXPECT_EQ(world.names().size(), 1U) << "a start clears what was left";
      });
}

TEST(Faults, OfTheFoldersFlush_KeepTheNewFileAndDoubtIt) {
  World world;
  world.start();
  const std::string doubt =
      world.container.file() + " is replaced, but may not survive a power cut: ";
  // With success where there is no such flush at all.
  const std::tuple<const char*, int, bool> cases[] = {{"openFolder", EIO, false},
                                                      {"flush", EIO, false},
                                                      {"flush", EINVAL, true},
                                                      {"openFolder", EACCES, true}};
  std::int64_t saved = kNew;
  for (const auto& [operation, error, isSuccess] : cases) {
    // The writer opens the folder by this name.
    world.files.fail(error, [&name = operation](std::size_t, const auto& call) {
      return call.operation == name && call.path.ends_with("/.");
    });
    world.desktop.log.lines.clear();
    world.store->setFraction(++saved);
    EXPECT_EQ(world.fraction(), saved);
    EXPECT_EQ(world.store->saveProblem().empty(), isSuccess);
    EXPECT_EQ(world.desktop.log.count(isSuccess ? "SAVE SUCCESS" : "SAVE FAIL"), 1);
    EXPECT_EQ(world.desktop.log.lines.size(), 2U);
    EXPECT_TRUE(world.isExplained(doubt, error));
    EXPECT_EQ(world.names().size(), 1U);
    EXPECT_EQ(world.files.openHandles(), 0U);
  }
}

// The whole start: container, load, clearing.
TEST(Faults, OfAStart_WriteNothingOverTheFile) {
  eachFault(
      [](World&) {}, started,
      [](World& world, int error, bool fromThenOn) {
        auto& log = world.desktop.log;
        EXPECT_EQ(world.content().size(), 2U);
        EXPECT_EQ(world.names().size(), 1U);
        EXPECT_EQ(log.count("SAVE"), 0) << "not taken for missing";
        if (world.store->fraction() == kOld) return;
        EXPECT_TRUE(world.isExplained(world.container.path(), error));
        EXPECT_EQ(world.store->fraction(), 3) << "the default";
        if (world.store->fileURL().empty()) return;

        // As long as it cannot be read it is not replaced.
        if (fromThenOn) {
          world.store->setFraction(kNew);
          EXPECT_EQ(log.count("SAVE FAIL"), 1);
          EXPECT_EQ(world.content().size(), 2U);
        }
        world.files.heal();
        log.lines.clear();
        // The next save finds that it can be read: it fails, and the file is loaded.
        world.store->setNumberOfCurrenciesInWidget(7);
        EXPECT_EQ(log.lines, (std::vector<std::string>{"SAVE FAIL", world.store->saveProblem()}));
        EXPECT_EQ(world.updates, 0) << "an observer may end who saves";
        world.desktop.loop.advance(0);
        EXPECT_EQ(world.updates, 1);
        EXPECT_EQ(world.store->ud(), world.content());
        EXPECT_EQ(world.store->fraction(), kOld) << "not the default of the rejected start";
        EXPECT_EQ(world.store->numberOfCurrenciesInWidget(), 10);
        world.store->setNumberOfCurrenciesInWidget(7);
        EXPECT_EQ(world.store->saveProblem(), "");
        EXPECT_EQ(*world.content().find("other"), Value("kept"));
        EXPECT_EQ(world.fraction(), kOld);
        EXPECT_EQ(*world.content().find("NumberOfCurrenciesInWidget"), Value(7));
      });
}

TEST(Faults, OfAReload_KeepTheLastContent) {
  eachFault(
      [](World& world) {
        world.start();
        world.write({{"Fraction", kNew}, {"new", 1}});
      },
      [](World& world) { world.desktop.watch.change(); },
      [](World& world, int error, bool fromThenOn) {
        EXPECT_EQ(world.desktop.log.count("SAVE"), 0);
        const bool isLoaded = world.store->fraction() == kNew;
        world.files.heal();
        if (!isLoaded) {
          EXPECT_EQ(*world.store->ud().find("other"), Value("kept"));
          EXPECT_TRUE(world.isExplained(world.container.file(), error));
          // The next change loads it, or the next save in its place.
          if (fromThenOn) {
            world.desktop.watch.change();
          } else {
            world.store->setMode(StyleMode::dark);
            EXPECT_NE(world.store->saveProblem(), "");
          }
          EXPECT_EQ(world.store->ud(), world.content());
        }
        // The other process's change is still there after this one's next save.
        world.store->setMode(StyleMode::dark);
        EXPECT_EQ(world.store->fraction(), kNew);
        EXPECT_EQ(*world.content().find("Mode"), Value(1));
        EXPECT_EQ(*world.content().find("new"), Value(1));
        EXPECT_EQ(world.fraction(), kNew);
      });
}

// An observer of the load that a save makes up for may end the store and what is built on it.
TEST(Faults, OnceTheFileCanBeRead_ItsObserverMayEndTheStore) {
  World world;
  world.start();
  world.write({{"Fraction", kNew}});
  world.files.failCall(0, EACCES, true);
  world.desktop.watch.change();
  world.files.heal();
  auto rates = std::make_unique<RateManager>(world.desktop.platform, nullptr, world.store.get());
  const auto end = world.desktop.notifications.addObserver(fileWatcherUpdate, [&] {
    rates.reset();
    world.store.reset();
  });
  const auto converted = rates->convertAmount(5, Currency::make("EUR"), true);
  EXPECT_EQ(converted.second->amount().intValue(), 5);
  world.desktop.loop.advance(0);
  EXPECT_EQ(world.store, nullptr);
  EXPECT_EQ(world.fraction(), kNew);
}

// An unreadable file whose keeping aside fails is not replaced; trying again keeps one copy. The
// same where there are no hard links.
TEST(Faults, OfKeepingAside_ReplaceNothingUnkept) {
  for (const int linkError : {0, EPERM}) {
    SCOPED_TRACE(linkError);
    eachFault(
        [linkError](World& world) {
          world.refuseLinks(linkError);
          world.start();
          test::writeFile(world.container.file(), "damage");
          world.desktop.watch.change();
        },
        [](World& world) { world.store->setFraction(kNew); },
        [](World& world, int /*error*/, bool /*fromThenOn*/) {
          if (test::readFile(world.container.file()) == "damage") {
            world.files.heal();
            world.store->setFraction(kNew);
          }
          EXPECT_EQ(world.fraction(), kNew);
          EXPECT_EQ(world.asides(), std::vector<std::string>{"damage"});
        });
    if (HasFailure()) return;
  }
}

TEST(Faults, WithoutLinks_OnlyWhatIsTooLargeToCopyStays) {
  for (const int linkError : {EPERM, EOPNOTSUPP, EMLINK, ENOSYS}) {
    World world;
    const fs::path file = world.container.file();
    world.start();
    world.refuseLinks(linkError);
    fs::permissions(file, fs::perms(0640));
    fs::resize_file(file, limits::kStoreFileBytes + 1);
    world.desktop.watch.change();
    world.store->setFraction(kNew);
    EXPECT_TRUE(world.isExplained(file, EFBIG));
    EXPECT_EQ(fs::file_size(file), limits::kStoreFileBytes + 1);
    fs::resize_file(file, 9);
    world.desktop.loop.advance(2.0);
    world.desktop.watch.change();
    world.store->setFraction(kNew);
    EXPECT_EQ(world.store->saveProblem(), "");
    EXPECT_EQ(world.names().size(), 2U);
    for (const std::string& name : world.names()) {
      const fs::path path = fs::path(world.container.path()) / name;
      EXPECT_EQ(fs::status(path).permissions(), fs::perms(path == file ? 0600 : 0640)) << name;
    }
  }
}

}  // namespace
}  // namespace fexora
