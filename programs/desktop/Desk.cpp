#include "programs/desktop/Desk.h"

#include "programs/shared/ShownNames.h"

namespace fexora::desktop {

Desk Desk::process() {
  program::useNamesOf("");
  Log::setProcessSink({});
  Desk desk{Platform::process(), currencyManager(), storeManager(), rateManager()};
  desk.store.setReconcilesAfterSkip(true);
  seedBundledRates(desk.store);
  return desk;
}

}  // namespace fexora::desktop
