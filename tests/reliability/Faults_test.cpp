// Each call that a load or a save makes of the system, failing in turn, once and from then on.
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "fexora/fexora.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"

#include "tests/support/FaultyFiles.h"
#include "tests/support/UnflushedFiles.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora {
namespace {

using Operation = test::FaultyFiles::Operation;

constexpr int kErrors[] = {EACCES, EIO,    EMFILE, ENFILE, ENOMEM, EINTR,
                           ENOSPC, EDQUOT, EROFS,  ESTALE, EPERM};

std::string causeOf(int error) {
  return std::error_code(error, std::generic_category()).message();
}

class Faults : public testing::Test {
 protected:
  static constexpr std::int64_t kOld = 6;
  static constexpr std::int64_t kNew = 8;

  // A store whose file holds kOld, in a folder of its own, on files that fail when told to.
  struct World {
    World() {
      test::writeFile(container.file(),
                      writePropertyList(Dictionary{{"Fraction", kOld}, {"other", "kept"}}).bytes);
    }
    StoreManager& start() {
      store = std::make_unique<StoreManager>(desktop.platform);
      desktop.loop.advance(2.0);
      return *store;
    }
    Dictionary onDisk() const {
      const auto read = readPropertyList(test::readFile(container.file()));
      EXPECT_TRUE(read.ok()) << read.error;
      return read.ok() ? *read.value.dictionary() : Dictionary();
    }
    std::size_t names() const {
      return static_cast<std::size_t>(
          std::distance(std::filesystem::directory_iterator(container.path()), {}));
    }

    // Without hard links when there is an error for them.
    class RealFiles final : public test::UnflushedFiles {
     public:
      std::error_code link(const std::string& from, const std::string& to) override {
        if (linkError != 0) return {linkError, std::generic_category()};
        return UnflushedFiles::link(from, to);
      }
      int linkError = 0;
    };

    test::TestContainer container;
    RealFiles real;
    test::FaultyFiles files{real};
    test::VirtualPlatform desktop{files};
    std::unique_ptr<StoreManager> store;
  };

  static void keepAside(int linkError);

  // Runs `check` with each call of `run` failing with each error, once and from then on. `prepare`
  // comes before and does not fail.
  static void eachFault(const std::function<void(World&)>& prepare,
                        const std::function<void(World&)>& run,
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
          SCOPED_TRACE(std::string(nameOf(calls[number].operation)) + " is call " +
                       std::to_string(number) + ": " + std::strerror(error) +
                       (fromThenOn ? " from then on" : " once"));
          check(world, error, fromThenOn);
          if (HasFailure()) return;
        }
      }
    }
  }
};

// Whether one line names the file and the error.
bool isExplained(const test::VirtualPlatform& desktop, const std::string& path, int error) {
  for (const std::string& line : desktop.log.lines) {
    if (line.find(path) != std::string::npos && line.find(causeOf(error)) != std::string::npos) {
      return true;
    }
  }
  return false;
}

bool isReplaced(const test::FaultyFiles& files) {
  return std::any_of(files.calls().begin(), files.calls().end(), [](const auto& call) {
    return call.operation == Operation::rename && !call.failed;
  });
}

void noFlushIsTriedAgain(const test::FaultyFiles& files) {
  bool flushFailed = false;
  for (const auto& call : files.calls()) {
    const bool isFileFlush =
        call.operation == Operation::flush && call.path.find("fexora-save") != std::string::npos;
    EXPECT_FALSE(flushFailed && isFileFlush) << "the flush was tried again";
    EXPECT_FALSE(flushFailed && call.operation == Operation::rename && !call.failed)
        << "renamed after a failed flush";
    flushFailed = flushFailed || (isFileFlush && call.failed);
  }
}

TEST_F(Faults, OfASave_KeepTheOldFileAndSayWhy) {
  eachFault([](World& world) { world.start(); },
            [](World& world) { world.store->setFraction(kNew); },
            [](World& world, int error, bool fromThenOn) {
              auto& [container, real, files, desktop, store] = world;
              const bool isSaved = desktop.log.count("SAVE SUCCESS") == 1;
              EXPECT_EQ(desktop.log.count("SAVE"), 1);
              EXPECT_EQ(isSaved, store->saveProblem().empty());
              EXPECT_EQ(store->fraction(), kNew);
              EXPECT_EQ(store->ud().find("Fraction")->number()->intValue(), kNew);
              EXPECT_TRUE(isReplaced(files) || !isSaved);
              EXPECT_EQ(world.onDisk().find("Fraction")->number()->intValue(),
                        isReplaced(files) ? kNew : kOld);
              EXPECT_EQ(*world.onDisk().find("other"), Value("kept"));
              EXPECT_EQ(files.openHandles(), 0U);
              noFlushIsTriedAgain(files);
              EXPECT_LE(files.calls().size(), 16U);
              if (!isSaved) {
                EXPECT_TRUE(isExplained(desktop, container.file(), error));
                EXPECT_EQ(desktop.log.lines.size(), 2U);
              }
              // With every later call failing the temporary cannot be removed, either.
              const bool mayStay = fromThenOn && files.count(Operation::remove) > 0;
              EXPECT_LE(world.names(), mayStay ? 2U : 1U);
              files.heal();
              store->setFraction(kNew + 1);
              EXPECT_EQ(store->saveProblem(), "");
              EXPECT_EQ(world.onDisk().find("Fraction")->number()->intValue(), kNew + 1);
              world.start();
              EXPECT_EQ(world.names(), 1U) << "a start clears what was left";
            });
}

TEST_F(Faults, OfTheFoldersFlush_KeepTheNewFileAndDoubtIt) {
  World world;
  world.start();
  const std::string doubt =
      world.container.file() + " is replaced, but may not survive a power cut: ";
  struct Case {
    Operation operation;
    int error;
    bool isSuccess;  // where there is no such flush at all
  };
  for (const auto [operation, error, isSuccess] :
       {Case{Operation::openFolder, EIO, false}, Case{Operation::flush, EIO, false},
        Case{Operation::flush, EINVAL, true}, Case{Operation::openFolder, EACCES, true}}) {
    // The flush of the file comes first: count to the folder's.
    world.files.heal();
    world.store->setFraction(kNew);
    EXPECT_EQ(world.store->saveProblem(), "");
    const auto& calls = world.files.calls();
    std::size_t last = calls.size();
    while (calls[--last].operation != operation) {
    }
    world.desktop.log.lines.clear();
    world.files.failCall(last, error, false);
    world.store->setFraction(kNew + 1);
    EXPECT_EQ(world.onDisk().find("Fraction")->number()->intValue(), kNew + 1);
    EXPECT_EQ(world.store->saveProblem().empty(), isSuccess);
    EXPECT_EQ(world.desktop.log.count("SAVE SUCCESS"), isSuccess ? 1 : 0);
    EXPECT_EQ(world.desktop.log.count("SAVE FAIL"), isSuccess ? 0 : 1);
    EXPECT_EQ(world.desktop.log.count(doubt + causeOf(error)), 1);
    EXPECT_EQ(world.names(), 1U);
    EXPECT_EQ(world.files.openHandles(), 0U);
  }
}

// The whole start: container, load, clearing.
TEST_F(Faults, OfAStart_WriteNothingOverTheFile) {
  eachFault(
      [](World&) {}, [](World& world) { world.start(); },
      [](World& world, int error, bool fromThenOn) {
        auto& [container, real, files, desktop, store] = world;
        EXPECT_EQ(world.onDisk().size(), 2U);
        EXPECT_EQ(files.openHandles(), 0U);
        EXPECT_EQ(world.names(), 1U);
        EXPECT_EQ(desktop.log.count("SAVE"), 0) << "not taken for missing";
        const bool isLoaded = store->fraction() == kOld;
        if (isLoaded) return;
        EXPECT_TRUE(isExplained(desktop, container.path(), error));
        EXPECT_EQ(store->fraction(), 3) << "the default";

        // As long as it cannot be read it is not replaced, and what was set is not lost.
        if (!store->fileURL().empty() && fromThenOn) {
          store->setNumberOfCurrenciesInWidget(7);
          EXPECT_EQ(desktop.log.count("SAVE FAIL"), 1);
          EXPECT_EQ(world.onDisk().size(), 2U);
        }
        files.heal();
        if (store->fileURL().empty()) return;
        // The next save finds that it can be read: it fails, and the file is loaded.
        int updates = 0;
        const auto token = desktop.notifications.addObserver(fileWatcherUpdate, [&] { ++updates; });
        desktop.log.lines.clear();
        store->setNumberOfCurrenciesInWidget(7);
        EXPECT_NE(store->saveProblem(), "");
        EXPECT_EQ(desktop.log.lines, (std::vector{std::string("SAVE FAIL"), store->saveProblem()}));
        EXPECT_EQ(updates, 1);
        EXPECT_EQ(store->ud(), world.onDisk());
        EXPECT_EQ(store->numberOfCurrenciesInWidget(), 10);
        store->setNumberOfCurrenciesInWidget(7);
        EXPECT_EQ(store->saveProblem(), "");
        EXPECT_EQ(*world.onDisk().find("other"), Value("kept"));
        EXPECT_EQ(store->fraction(), kOld) << "not the default of the refused start";
        EXPECT_EQ(world.onDisk().find("Fraction")->number()->intValue(), kOld);
        EXPECT_EQ(world.onDisk().find("NumberOfCurrenciesInWidget")->number()->intValue(), 7);
      });
}

TEST_F(Faults, OfAReload_KeepTheLastContent) {
  eachFault(
      [](World& world) {
        world.start();
        test::writeFile(world.container.file(),
                        writePropertyList(Dictionary{{"Fraction", kNew}, {"new", 1}}).bytes);
      },
      [](World& world) { world.desktop.watch.change(); },
      [](World& world, int error, bool /*fromThenOn*/) {
        auto& [container, real, files, desktop, store] = world;
        EXPECT_EQ(desktop.log.count("SAVE"), 0);
        EXPECT_EQ(files.openHandles(), 0U);
        const bool isLoaded = store->fraction() == kNew;
        if (!isLoaded) {
          EXPECT_EQ(*store->ud().find("other"), Value("kept"));
          EXPECT_TRUE(isExplained(desktop, container.file(), error));
        }
        files.heal();
        // The other process's change is still there after this one's next save.
        if (!isLoaded) store->setMode(StyleMode::light);
        store->setMode(StyleMode::dark);
        EXPECT_EQ(world.onDisk().find("Fraction")->number()->intValue(), kNew);
        EXPECT_NE(world.onDisk().find("new"), nullptr);
        EXPECT_EQ(world.onDisk().find("Mode")->number()->intValue(), 1);
        EXPECT_EQ(store->fraction(), kNew);
      });
}

// An unreadable file whose keeping aside fails is not replaced; trying again keeps one copy. The
// same where there are no hard links.
void Faults::keepAside(int linkError) {
  eachFault(
      [linkError](World& world) {
        world.real.linkError = linkError;
        world.start();
        test::writeFile(world.container.file(), "damage");
        world.desktop.watch.change();
      },
      [](World& world) { world.store->setFraction(kNew); },
      [](World& world, int /*error*/, bool /*fromThenOn*/) {
        const auto asides = [&world] {
          std::size_t count = 0;
          for (const auto& entry : std::filesystem::directory_iterator(world.container.path())) {
            const std::string path = entry.path().string();
            if (path.find(".fexora-unreadable-") == std::string::npos) continue;
            EXPECT_EQ(test::readFile(path), "damage");
            ++count;
          }
          return count;
        };
        if (test::readFile(world.container.file()) == "damage") {
          world.files.heal();
          world.store->setFraction(kNew);
        }
        EXPECT_EQ(world.onDisk().find("Fraction")->number()->intValue(), kNew);
        EXPECT_EQ(asides(), 1U);
      });
}

TEST_F(Faults, OfKeepingAside_ReplaceNothingUnkept) {
  for (const int linkError : {0, EPERM}) {
    SCOPED_TRACE(linkError);
    keepAside(linkError);
    if (HasFailure()) return;
  }
}

TEST_F(Faults, WithoutLinks_OnlyWhatIsTooLargeToCopyStays) {
  namespace fs = std::filesystem;
  for (const int linkError : {EPERM, EOPNOTSUPP, EMLINK, ENOSYS}) {
    World world;
    const fs::path file = world.container.file();
    world.start();
    world.real.linkError = linkError;
    fs::permissions(file, fs::perms(0640));
    fs::resize_file(file, limits::kStoreFileBytes + 1);
    world.desktop.watch.change();
    world.store->setFraction(kNew);
    EXPECT_TRUE(isExplained(world.desktop, file, EFBIG));
    EXPECT_EQ(fs::file_size(file), limits::kStoreFileBytes + 1);
    fs::resize_file(file, 9);
    world.desktop.loop.advance(2.0);
    world.desktop.watch.change();
    world.store->setFraction(kNew);
    EXPECT_EQ(world.store->saveProblem(), "");
    EXPECT_EQ(world.names(), 2U);
    for (const auto& entry : fs::directory_iterator(world.container.path())) {
      const auto rights = entry.path() == file ? fs::perms(0600) : fs::perms(0640);
      EXPECT_EQ(entry.status().permissions(), rights) << entry.path();
    }
  }
}

}  // namespace
}  // namespace fexora
