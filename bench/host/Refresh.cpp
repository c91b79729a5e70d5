// The main loop during refreshes: the answer comes from a server on the loopback address, is taken
// over, and saved.
#include <cstdio>

#include "bench/host/Host.h"
#include "bench/host/LoopStalls.h"
#include "bench/host/RatesServer.h"
#include "bench/support/Results.h"

namespace fexora::bench {
namespace {

constexpr int kRefreshes = 20;
const char* const kJob = "longest stretch of the main loop in a refresh";

// The process's transport, sent to another address.
class ElsewhereTransport final : public Transport {
 public:
  ElsewhereTransport(Transport& inner, std::string address)
      : inner_(inner), address_(std::move(address)) {}
  void get(const std::string&, Reader read, Completion complete) override {
    inner_.get(address_, read, std::move(complete));
  }

 private:
  Transport& inner_;
  std::string address_;
};

// One refresh and save; whether the service's rates came.
bool refresh(RateManager& manager, bool sync) {
  bool done = false;
  bool came = false;
  manager.setLastUpdate({});
  manager.loadRates({}, false, sync, [&](bool fromCache, const ResponseError* error) {
    done = !fromCache;
    came = done && error == nullptr;
  });
  RunLoop::process().runUntil([&] { return done; });
  return came;
}

void race(const World& world, RateManager& manager, const TimedFiles& files, bool sync) {
  std::vector<double> whole;
  std::vector<double> withoutFlushes;
  for (int i = 0; i < kRefreshes; ++i) {
    const LoopStalls stalls(files);
    if (!refresh(manager, sync)) {
      std::printf("  the refresh failed\n");
      return;
    }
    whole.push_back(stalls.longest());
    withoutFlushes.push_back(stalls.longestWithoutFlushes());
  }
  const std::string way = sync ? "saved at once" : "saved later";
  const std::size_t n = world.codes.size();
  reportTiming(kJob, n, way, timingOf(std::move(withoutFlushes), 0));
  if (sync) reportTiming(kJob, n, way + ", flushes included", timingOf(std::move(whole), 0));
}

}  // namespace

void benchRefresh(const World& world, const TimedFiles& files) {
  std::printf("%s, n = %zu\n", kJob, world.codes.size());
  const RatesServer server(answerOf(world));
  ElsewhereTransport transport(Transport::process(), server.address());
  Platform platform = Platform::process();
  platform.transport = &transport;
  RateManager manager(platform);
  refresh(manager, false);  // opens the module
  race(world, manager, files, false);
  race(world, manager, files, true);
}

}  // namespace fexora::bench
