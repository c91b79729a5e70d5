// Saving and reading, against the same bytes without a meaning.
#include <cstring>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <unistd.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/files/AtomicWriter.h"
#include "fexora/platform/files/ReadFile.h"
#include "fexora/platform/plist/DictionaryCodec.h"
#include "fexora/platform/plist/PropertyListWriter.h"

#include "bench/core/Bench.h"
#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

std::string readAll(const std::string& path) {
  return std::move((*readWholeFile(Files::process(), path, limits::kStoreFileBytes)).bytes);
}

// The calls of a save without any encoding: temporary, write, flush, rename, flush of the folder.
double plainSave(const std::string& folder, const std::string& bytes) {
  const std::string temporary = folder + "/plain.tmp";
  const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  const ssize_t written = ::write(file, bytes.data(), bytes.size());
  ::fsync(file);
  ::close(file);
  ::rename(temporary.c_str(), (folder + "/plain").c_str());
  const int directory = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  ::fsync(directory);
  ::close(directory);
  return static_cast<double>(written);
}

// What a reader has to do at least: find where each element begins.
double scan(const std::string& bytes) {
  double count = 0;
  for (const char* at = bytes.data();
       (at = static_cast<const char*>(std::memchr(
            at, '<', static_cast<std::size_t>(bytes.data() + bytes.size() - at)))) != nullptr;
       ++at) {
    ++count;
  }
  return count;
}

void raceSave(const World& world, StoreManager& store) {
  const std::string bytes = readAll(store.fileURL());
  std::int64_t fraction = 3;
  Race race("a setting saved beside n rates", world.codes.size());
  race.add("the same bytes and calls, no encoding",
           [&] { return plainSave(world.folder + "/container", bytes); });
  race.add("setFraction", [&] {
    store.setFraction(fraction = fraction == 3 ? 4 : 3);
    return 1.0;
  });
  const SaveJob job{world};
  Peers<SaveJob>::enter(race, job);
  race.run(2.0);
}

void raceReads(const World& world, StoreManager& store) {
  const std::string path = store.fileURL();
  const std::string bytes = readAll(path);
  Race first("store read at start", world.codes.size());
  first.add("one scan of the bytes for the elements", [&] { return scan(bytes); });
  first.add("decoded", [&] {
    DictionaryCodec codec;
    return static_cast<double>(codec.decode(bytes).dictionary.size());
  });
  const ReadJob job{world};
  Peers<ReadJob>::enter(first, job);
  first.run();

  // Two files that differ in one setting, read in turn.
  store.setFraction(store.fraction() == 3 ? 4 : 3);
  const std::string other = readAll(path);
  const std::string copy = world.folder + "/copy";
  DictionaryCodec codec;
  bool turn = false;
  const auto next = [&]() -> const std::string& { return (turn = !turn) ? bytes : other; };
  Race again("store read again after one setting", world.codes.size());
  std::ofstream(copy, std::ios::binary) << bytes;
  again.add("bytes read and compared with the last", [&] {
    return std::memcmp(readAll(copy).data(), bytes.data(), bytes.size()) == 0 ? 1.0 : 0.0;
  });
  again.add("bytes read and decoded", [&] {
    const std::string file = readAll(copy);
    return static_cast<double>(codec.decode(next()).dictionary.size() + file.size());
  });
  again.run();
}

}  // namespace

void benchStore(const World& world) {
  StoreManager& store = storeManager();
  store.saveUSDRates(world.records, true);
  store.setFraction(4);
  raceSave(world, store);
  raceReads(world, store);
}

}  // namespace fexora::bench
