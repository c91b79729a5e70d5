// bench_store N FOLDER [selected]: leaves in FOLDER the store of a process that got rates for N
// currencies just now, and whose person has selected them all, if asked for.
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "bench/support/World.h"

int main(int count, char** words) {
  const long n = count == 3 || count == 4 ? std::strtol(words[1], nullptr, 10) : 0;
  if (n < 2) {
    std::fputs("bench_store: expected a number of currencies, a folder and perhaps \"selected\"\n",
               stderr);
    return 2;
  }
  const fexora::bench::World world(static_cast<std::size_t>(n));
  fexora::StoreManager& store = fexora::storeManager();
  store.saveUSDRates(world.records, true);
  if (count == 4) {
    store.saveCurrencies(fexora::currencyManager().currencies());
    store.saveSourceCurrency(fexora::currencyManager().currencies().front(), 100, true);
  }
  std::filesystem::create_directories(words[2]);
  std::filesystem::copy(store.fileURL(), std::string(words[2]) + "/Store.plist",
                        std::filesystem::copy_options::overwrite_existing);
  return 0;
}
