// Twenty keys a second: each is a typed amount read and converted into all currencies. As the guide
// for hosts has it, without `sync` and with one coalesced save; and for comparison with a save a
// key.
#include <cstdio>

#include <glib.h>

#include "bench/host/Host.h"
#include "bench/host/LoopStalls.h"
#include "bench/support/Results.h"

namespace fexora::bench {
namespace {

constexpr int kKeys = 60;
constexpr unsigned kKeyMilliseconds = 50;
const char* const kJob = "longest stretch of the main loop at 20 keys a second";

struct Typist {
  RateManager& manager;
  StoreManager& store;
  bool sync;
  int keys = 0;

  void press() {
    const std::string typed = std::to_string(100 + keys++) + ".5";
    const NSNumber amount = parseAmount(typed).value_or(0);
    manager.convertAmount(amount, currencyManager().currencies()[1], sync);
    if (!sync) store.startSyncTimer();
  }
  static int pressed(void* typist) {
    static_cast<Typist*>(typist)->press();
    return G_SOURCE_CONTINUE;
  }
};

// A coalesced save falls in the second and a half after the last key.
void type(const World& world, RateManager& manager, StoreManager& store, const TimedFiles& files,
          bool sync) {
  Typist typist{manager, store, sync};
  const LoopStalls stalls(files);
  const unsigned keys = g_timeout_add(kKeyMilliseconds, &Typist::pressed, &typist);
  RunLoop::process().runUntil([&] { return typist.keys >= kKeys; });
  g_source_remove(keys);
  const double whileTyping = stalls.longest();
  bool rested = false;
  const auto rest = RunLoop::process().scheduleTimer(1.5, [&] { rested = true; });
  RunLoop::process().runUntil([&] { return rested; });
  const std::string way = sync ? "a save a key" : "one coalesced save";
  const auto report = [&](const std::string& what, double seconds) {
    reportFigure(kJob, world.codes.size(), way + ", " + what, seconds, "s");
  };
  report("while typing, flushes included", whileTyping);
  report("with the last save", stalls.longestWithoutFlushes());
  report("with the last save, flushes included", stalls.longest());
}

}  // namespace

void benchTyping(const World& world, const TimedFiles& files) {
  std::printf("%s, n = %zu\n", kJob, world.codes.size());
  StoreManager& store = storeManager();
  RateManager& manager = rateManager();
  manager.setLastUpdate(Date(RunLoop::process().wallSeconds()));  // asks no service
  manager.loadRates({}, false, false, nullptr);
  type(world, manager, store, files, false);
  type(world, manager, store, files, true);
}

}  // namespace fexora::bench
