#include "programs/desktop/Desk.h"

#include <csignal>

namespace fexora::desktop {

Desk Desk::process() {
  // A file-size limit then fails the save, which is shown, instead of ending the window.
  std::signal(SIGXFSZ, SIG_IGN);
  static auto* const names = new CurrencyNames();
  Platform::process().strings = names;
  Log::setProcessSink({});
  Desk desk{Platform::process(), currencyManager(), storeManager(), rateManager()};
  desk.store.setReconcilesAfterSkip(true);
  seedBundledRates(desk.store);
  return desk;
}

}  // namespace fexora::desktop
