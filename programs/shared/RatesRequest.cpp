#include "programs/shared/RatesRequest.h"

#include <optional>
#include <utility>
#include <vector>

namespace fexora::program {

void askForFreshRates(RateManager& rates, std::function<void(const ResponseError* error)> done) {
  rates.setLastUpdate(std::nullopt);
  rates.loadRates(std::vector<CurrencyRef>(),
                  [done = std::move(done)](bool fromCache, const ResponseError* error) {
                    if (!fromCache) done(error);
                  });
}

}  // namespace fexora::program
