#include "bench/watch/Observer.h"

#include <glib.h>

#include "bench/watch/Writer.h"

namespace fexora::bench {
namespace {

constexpr unsigned kPatience = 1000;  // milliseconds

int giveUp(void* gaveUp) {
  *static_cast<bool*>(gaveUp) = true;
  return G_SOURCE_REMOVE;
}

}  // namespace

std::optional<std::int64_t> LoopObserver::observe(const std::function<void()>& change) {
  bool gaveUp = false;
  const unsigned timeout = g_timeout_add(kPatience, &giveUp, &gaveUp);
  told_.reset();
  change();
  while (!told_ && !gaveUp) g_main_context_iteration(nullptr, true);
  if (!gaveUp) g_source_remove(timeout);
  return told_;
}

void LoopObserver::told() {
  if (!told_) told_ = now();
}

std::vector<WatchPeer>& WatchPeer::all() {
  static std::vector<WatchPeer> peers;
  return peers;
}

}  // namespace fexora::bench
