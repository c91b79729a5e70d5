// One of two processes that share a store and both change it:
//   reliability_rival NAME UPDATES MEAN-SECONDS SEED plain|reconciling
// Each update sets a key of its own, NAME with a number, and saves. Updates come at random, their
// distances exponentially distributed; after the last one the process stays until all is quiet.
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>

#include "fexora/fexora.h"

int main(int count, char** words) {
  using namespace fexora;
  if (count != 6) {
    std::fputs("reliability_rival: NAME UPDATES MEAN-SECONDS SEED plain|reconciling\n", stderr);
    return 2;
  }
  const std::string name = words[1];
  const int updates = std::atoi(words[2]);
  std::mt19937_64 engine(std::strtoull(words[4], nullptr, 10));
  std::exponential_distribution<double> distance(1 / std::atof(words[3]));
  constexpr double kQuiet = 3;

  Log::setProcessSink({});
  StoreManager& store = storeManager();
  store.setReconcilesAfterSkip(std::string(words[5]) == "reconciling");
  RunLoop& loop = *Platform::process().loop;
  bool isOver = false;
  int done = 0;
  std::shared_ptr<Timer> timer;
  const std::function<void()> update = [&] {
    if (done == updates) {
      timer = loop.scheduleTimer(kQuiet, [&] { isOver = true; });
      return;
    }
    Dictionary content = store.ud();
    ++done;
    content.set(name + std::to_string(done), done);
    store.setUd(content);
    store.synchronize();
    timer = loop.scheduleTimer(distance(engine), update);
  };
  timer = loop.scheduleTimer(distance(engine), update);
  loop.runUntil([&] { return isOver; });
  return 0;
}
