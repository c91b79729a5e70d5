// Memory in use as the allocator counts it, its own bookkeeping included: the difference that each
// step makes.
#include <cstdio>

#include <malloc.h>

#include "fexora/rates/PairRates.h"

#include "bench/host/Host.h"
#include "bench/support/Results.h"

namespace fexora::bench {
namespace {

const char* const kJob = "memory of an idle host";

double inUse() {
  const auto info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
}

class Steps {
 public:
  explicit Steps(std::size_t n) : n_(n) {}

  // What has been taken since the last step, for each currency.
  void report(const char* what) {
    const double now = inUse();
    reportFigure(kJob, n_, what, (now - last_) / static_cast<double>(n_), "bytes a currency");
    last_ = inUse();
  }

 private:
  std::size_t n_;
  double last_ = inUse();
};

}  // namespace

void benchMemory(const World& world) {
  std::printf("%s, n = %zu\n", kJob, world.codes.size());
  Steps steps(world.codes.size());
  CurrencyManager& catalogue = currencyManager();
  steps.report("the catalogue");
  storeManager().saveUSDRates(world.records, true);
  steps.report("the store, its dictionary and its file's bytes");
  // As RateManager keeps them: the known rates, their pairs and the selection.
  const auto known = std::make_unique<std::vector<KnownRate>>(knownRates(catalogue, world.records));
  const auto selection = std::make_unique<std::vector<CurrencyRef>>(catalogue.currencies());
  const auto pairs = std::make_unique<PairRates>(catalogue, *known, *selection);
  steps.report("the rate engine");
  catalogue.currenciesForString("a", 1, {});
  steps.report("the search's keys");
  if (pairs->empty()) std::puts("  no pairs");
}

}  // namespace fexora::bench
