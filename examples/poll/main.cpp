// A host without a toolkit: its own loop, a conversion, and a line for each change that another
// process makes to the store.
#include <cstdio>

#include "PollLoop.h"

using namespace fexora;

int main() {
  static PollLoop loop;
  Platform::process().loop = &loop;  // before anything else asks the library
  Log::setProcessSink([](std::string_view line) {
    std::fprintf(stderr, "log: %.*s\n", static_cast<int>(line.size()), line.data());
  });
  storeManager().setReconcilesAfterSkip(true);  // misses nothing around its own saves
  seedBundledRates(storeManager());
  rateManager().loadRates(
      storeManager().loadCurrencies(), [](bool fromCache, const ResponseError*) {
        if (!fromCache) return;
        const auto dollar = currencyManager().currencyForCode("USD");
        for (const auto& item : rateManager().convertAmount(100, dollar, false).first.items()) {
          std::puts(item.description().c_str());
        }
      });
  bool isTold = false;
  const auto token = NotificationCenter::defaultCenter().addObserver(fileWatcherUpdate, [&] {
    std::printf("fraction is %d\n", static_cast<int>(storeManager().fraction()));
    isTold = true;
  });
  std::puts("watching");
  std::fflush(stdout);
  loop.runUntil([&] { return isTold; });
}
