// bench_paths NAME: prepares one hot path and takes it kRounds times, for callgrind to count.
// bench_paths list: the names. Only what runs inside measuredPath() is counted.
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>

#include "fexora/platform/plist/DictionaryCodec.h"
#include "fexora/rates/PairRates.h"

#include "bench/support/World.h"

namespace {

using fexora::bench::World;
using Path = std::function<double()>;

constexpr std::size_t kCurrencies = 339;
constexpr int kRounds = 10;

Path derivation(const World& world) {
  return [&world] {
    const auto& catalogue = fexora::currencyManager();
    const fexora::PairRates pairs(catalogue, fexora::knownRates(catalogue, world.records),
                                  catalogue.currencies());
    return static_cast<double>(pairs.size());
  };
}

Path conversion(const World& world) {
  const auto& catalogue = fexora::currencyManager();
  const fexora::PairRates pairs(catalogue, fexora::knownRates(catalogue, world.records),
                                catalogue.currencies());
  return [&catalogue, pairs] {
    return pairs.convert(*catalogue.currencies()[1], 3.5, false).back().dstAmount.doubleValue();
  };
}

Path search(const World&) {
  return [] {
    return static_cast<double>(fexora::currencyManager().currenciesForString("bc", 20, {}).size());
  };
}

Path amount(const World&) {
  return [] { return fexora::parseAmount("1234.56").value_or(0); };
}

Path storeRead(const World& world) {
  fexora::StoreManager& store = fexora::storeManager();
  store.saveUSDRates(world.records, true);
  std::ifstream file(store.fileURL(), std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  return [bytes] {
    fexora::DictionaryCodec codec;
    return static_cast<double>(codec.decode(bytes).dictionary.size());
  };
}

constexpr struct {
  const char* name;
  Path (*make)(const World&);
} kPaths[] = {{"derivation", derivation},
              {"conversion", conversion},
              {"search", search},
              {"amount", amount},
              {"store-read", storeRead}};

}  // namespace

// A name that callgrind finds.
extern "C" __attribute__((noinline)) double measuredPath(const Path& path) {
  double sum = 0;
  for (int round = 0; round < kRounds; ++round) sum += path();
  return sum;
}

int main(int count, char** words) {
  const char* const wanted = count == 2 ? words[1] : "";
  fexora::Locale::setCurrent("en_US");
  for (const auto& [name, make] : kPaths) {
    if (std::strcmp(wanted, "list") == 0) std::puts(name);
    if (std::strcmp(wanted, name) != 0) continue;
    const World world(kCurrencies);
    const Path path = make(world);
    path();  // what is made once is not counted
    std::printf("%g\n", measuredPath(path));
    return 0;
  }
  return std::strcmp(wanted, "list") == 0 ? 0 : 2;
}
