// Real store files, damaged and met by a store: what can be read is taken as it is and reads the
// same once it was saved; what cannot is said, changes nothing, and is kept aside by the save.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "fexora/fexora.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/PropertyListReader.h"

#include "fuzz/Mutator.h"
#include "tests/support/Command.h"
#include "tests/support/CrashDisk.h"
#include "tests/support/Describe.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora::test {
namespace {

// A process whose container is a disk in memory.
struct DamagedWorld {
  static constexpr const char* kFolder = "/container";

  DamagedWorld() { disk.makeFolder(kFolder, 0700); }
  bool isKeptAside(const std::string& bytes) {
    const auto names = disk.list(kFolder);
    return std::any_of(names->begin(), names->end(), [&](const std::string& name) {
      return name.starts_with(".fexora-unreadable-") &&
             disk.content(std::string(kFolder) + "/" + name) == bytes;
    });
  }

  const EnvironmentVariable container{"FEXORA_CONTAINER", kFolder};
  const std::string path = std::string(kFolder) + "/Store.plist";
  CrashDisk disk;
  VirtualPlatform desktop{disk};
};

// As the library writes it.
std::string realStore(std::size_t rates) {
  DamagedWorld world;
  StoreManager store(world.desktop.platform);
  seedBundledRates(store);
  auto all = *store.loadUSDRates();
  all.resize(rates);
  store.saveUSDRates(all, false);
  store.saveCurrencies({Currency::make("EUR"), Currency::make("GBP")});
  store.saveSourceCurrency(Currency::make("EUR"), 12.5, false);
  store.setTodayCurrencies({Currency::make("JPY")});
  return *world.disk.content(world.path);
}

// As Python writes it.
std::string inBinary(const std::string& xml) {
  const std::string script =
      "import plistlib, sys\n"
      "value = plistlib.load(sys.stdin.buffer)\n"
      "plistlib.dump(value, sys.stdout.buffer, fmt=plistlib.FMT_BINARY)\n";
  return runCommand({FEXORA_TEST_PYTHON, "-c", script}, xml).output;
}

class Damage : public testing::Test {
 protected:
  // A running store reloads the file, and another one starts with it and saves.
  void meet(const std::string& bytes) {
    DamagedWorld world;
    world.disk.put(world.path, xml_);
    StoreManager running(world.desktop.platform);
    const Dictionary before = running.ud();
    world.desktop.loop.advance(2.0);
    world.disk.put(world.path, bytes);
    running.folderUpdate();
    const auto read = readPropertyList(bytes);
    const bool isRead = read.ok() && read.value.dictionary() != nullptr;
    ++(isRead ? read_ : rejected_);
    EXPECT_EQ(running.loadProblem().empty(), isRead);
    // Not-a-number equals nothing, but is described.
    const Dictionary& expected = isRead ? *read.value.dictionary() : before;
    EXPECT_TRUE(running.ud() == expected || describe(running.ud()) == describe(expected));

    StoreManager fresh(world.desktop.platform);
    EXPECT_EQ(world.desktop.log.count("SAVE"), 0) << "a reading start wrote";
    fresh.setFraction(5);
    const std::string saved = world.disk.content(world.path).value_or("");
    // What was read can hold what cannot be written: a date beyond the year 9999 in the binary
    // form.
    if (fresh.saveProblem().empty()) {
      EXPECT_TRUE(readPropertyList(saved).ok());
      EXPECT_TRUE(isRead || world.isKeptAside(bytes));
    } else {
      EXPECT_EQ(saved, bytes);
    }
    if (HasFailure()) writeFile("damage.plist", bytes);
  }

  const std::string xml_ = realStore(3);
  const std::string binary_ = inBinary(xml_);
  int read_ = 0;      // still a dictionary
  int rejected_ = 0;  // kept the last content
};

TEST_F(Damage, CutOffOrFlippedAtEachByte_IsTakenOrRejectedWhole) {
  for (const std::string& whole : {xml_, binary_}) {
    ASSERT_TRUE(readPropertyList(whole).ok());
    for (std::size_t at = 0; at < whole.size() && !HasFailure(); ++at) {
      const int before = read_;
      meet(whole.substr(0, at));
      // XML without its last line end is whole.
      EXPECT_TRUE(read_ == before || at + 1 == whole.size()) << at;
      std::string bytes = whole;
      bytes[at] = static_cast<char>(bytes[at] ^ (1 << (at % 8)));
      meet(bytes);
    }
  }
}

// FEXORA_DAMAGES says how many, for the long form.
TEST_F(Damage, AtRandom_IsTakenOrRejectedWhole) {
  const char* const count = std::getenv("FEXORA_DAMAGES");
  const std::string xml = realStore(12);
  fuzz::Mutator mutator({xml, inBinary(xml)});
  for (int i = count != nullptr ? std::atoi(count) : 6000; i > 0 && !HasFailure(); --i) {
    meet(mutator.next());
  }
  EXPECT_GT(read_, 100);
  EXPECT_GT(rejected_, 100);
  std::cout << read_ << " still dictionaries, " << rejected_ << " rejected and kept aside\n";
}

// The file that takes most: as many keys as the limits allow, each just too long to be held in
// place.
TEST_F(Damage, WorstFile_StaysWithinTheBoundOnMemory) {
  const TestContainer container;
  std::string bytes = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>";
  for (int key = 1'000'000'000; bytes.size() + 100 < limits::kStoreFileBytes; ++key) {
    bytes += "<key>000000" + std::to_string(key) + "</key><true/>";
  }
  bytes += "</dict></plist>";
  writeFile(container.file(), bytes);
  const auto run =
      runCommand({std::string(FEXORA_TEST_BINARY_DIR) + "/bin/reliability_saver", "load"});
  EXPECT_EQ(run.output, "Fraction 3\n") << "it was read, not rejected: " << run.errors;
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  const auto most = static_cast<std::size_t>(usage.ru_maxrss) * 1024;
  RecordProperty("MiB", static_cast<int>(most >> 20U));
  EXPECT_GT(most, bytes.size());
  // Sanitizers take memory of their own.
  EXPECT_LT(most, limits::kStoreMemoryBytes * (FEXORA_TEST_SANITIZED ? 16 : 1));
}

}  // namespace
}  // namespace fexora::test
