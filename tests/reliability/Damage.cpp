#include "tests/reliability/Damage.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "fexora/fexora.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"

#include "tests/support/Command.h"
#include "tests/support/CrashDisk.h"
#include "tests/support/Describe.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora::test {
namespace {

constexpr const char* kFolder = "/container";

// A process whose container is a disk in memory.
struct World {
  explicit World(const std::string& bytes) {
    disk.makeFolder(kFolder, 0700);
    disk.put(path, bytes);
  }

  const EnvironmentVariable container{"FEXORA_CONTAINER", kFolder};
  const std::string path = std::string(kFolder) + "/Store.plist";
  CrashDisk disk;
  VirtualPlatform desktop{disk};
};

bool isKeptAside(World& world, const std::string& bytes) {
  const auto names = world.disk.list(kFolder);
  return std::any_of(names->begin(), names->end(), [&](const std::string& name) {
    return name.starts_with(".fexora-unreadable-") &&
           world.disk.content(std::string(kFolder) + "/" + name) == bytes;
  });
}

}  // namespace

std::string realStore(int rates) {
  CrashDisk disk;
  const EnvironmentVariable container("FEXORA_CONTAINER", kFolder);
  VirtualPlatform desktop(disk);
  StoreManager store(desktop.platform);
  seedBundledRates(store);
  auto all = *store.loadUSDRates();
  all.resize(std::min(all.size(), static_cast<std::size_t>(rates)));
  store.saveUSDRates(all, false);
  store.saveCurrencies({Currency::make("EUR"), Currency::make("GBP")});
  store.saveSourceCurrency(Currency::make("EUR"), 12.5, false);
  store.setTodayCurrencies({Currency::make("JPY")});
  return *disk.content(std::string(kFolder) + "/Store.plist");
}

std::string inBinary(const std::string& xml) {
  const ScratchFolder scratch;
  writeFile(scratch / "xml", xml);
  const std::string script =
      "import plistlib, sys\n"
      "value = plistlib.load(open(sys.argv[1], 'rb'))\n"
      "plistlib.dump(value, open(sys.argv[2], 'wb'), fmt=plistlib.FMT_BINARY)\n";
  runCommand({FEXORA_TEST_PYTHON, "-c", script, scratch / "xml", scratch / "binary"});
  return readFile(scratch / "binary");
}

std::string Damager::damaged(std::string bytes, const std::string& other) {
  for (std::size_t times = 1 + below(4); times > 0; --times) damage(bytes, other);
  return bytes;
}

void Damager::damage(std::string& bytes, const std::string& other) {
  if (bytes.empty()) return;
  const std::size_t at = below(bytes.size());
  const std::size_t size = below(std::min<std::size_t>(bytes.size() - at, 64) + 1);
  switch (below(7)) {
    case 0:
      bytes.resize(at);
      break;
    case 1:
      bytes[at] = static_cast<char>(static_cast<unsigned char>(bytes[at]) ^ (1U << below(8)));
      break;
    case 2:
      bytes[at] = static_cast<char>(below(256));
      break;
    case 3:
      bytes.erase(at, size);
      break;
    case 4:
      bytes.insert(at, bytes.substr(at, size));
      break;
    case 5:
      bytes.replace(at, size, std::string(size, '\0'));
      break;
    default:
      bytes.replace(at, size, other.substr(std::min(at, other.size()), size));
      break;
  }
}

void DamageJudge::meet(const std::string& bytes) {
  std::string fault = faultOf(bytes);
  if (report_.fault.empty()) report_.fault = std::move(fault);
}

std::string DamageJudge::faultOf(const std::string& bytes) {
  static const std::string good = realStore(3);
  World world(good);
  StoreManager running(world.desktop.platform);
  const Dictionary before = running.ud();
  world.desktop.loop.advance(2.0);
  world.disk.put(world.path, bytes);
  running.folderUpdate();
  const auto read = readPropertyList(bytes);
  const bool isDictionary = read.ok() && read.value.dictionary() != nullptr;
  ++(isDictionary ? report_.read : report_.refused);
  if (isDictionary != running.loadProblem().empty()) return "the two readers disagree";
  const Dictionary& expected = isDictionary ? *read.value.dictionary() : before;
  // Not-a-number equals nothing, but is described.
  if (running.ud() != expected && describe(running.ud()) != describe(expected)) {
    return "odd content";
  }

  StoreManager fresh(world.desktop.platform);
  if (world.desktop.log.count("SAVE") != 0) return "a reading start wrote";
  fresh.setFraction(5);
  // What was read can hold what cannot be written: a date beyond the year 9999 in the binary form.
  const bool isSaved = fresh.saveProblem().empty();
  const std::string saved = world.disk.content(world.path).value_or("");
  if (!isSaved) return saved == bytes ? "" : "a failed save changed the file";
  const auto again = readPropertyList(saved);
  if (!again.ok()) return "a save that does not read: " + again.error;
  if (!isDictionary && !isKeptAside(world, bytes)) return "an unreadable file was not kept aside";
  return {};
}

}  // namespace fexora::test
