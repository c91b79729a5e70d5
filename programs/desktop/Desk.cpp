#include "programs/desktop/Desk.h"

namespace fexora::desktop {

Desk Desk::process() {
  static auto* const names = new CurrencyNames();
  Platform::process().strings = names;
  Log::setProcessSink({});
  Desk desk{Platform::process(), currencyManager(), storeManager(), rateManager()};
  desk.store.setReconcilesAfterSkip(true);
  seedBundledRates(desk.store);
  return desk;
}

}  // namespace fexora::desktop
