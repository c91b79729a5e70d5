#include <cstdio>

#include <fexora/fexora.h>

int main() {
  using namespace fexora;
  seedBundledRates(storeManager());  // a first start converts offline
  rateManager().loadRates(storeManager().loadCurrencies(), [](bool fromCache,
                                                              const ResponseError*) {
    if (!fromCache) return;  // fresh rates come later, on your main loop
    const auto dollar = currencyManager().currencyForCode("USD");
    const auto converted = rateManager().convertAmount("100", dollar, false).first;
    for (const auto& item : converted.items()) std::puts(item.description().c_str());
    storeManager().synchronize();  // one save at the end; while a person types: startSyncTimer()
  });
}
