#include "bench/host/LoopStalls.h"

#include <algorithm>

namespace fexora::bench {

LoopStalls* LoopStalls::active = nullptr;

LoopStalls::LoopStalls(const TimedFiles& files)
    : files_(files), poll_(g_main_context_get_poll_func(nullptr)) {
  begin();
  active = this;
  g_main_context_set_poll_func(nullptr, &LoopStalls::poll);
}

LoopStalls::~LoopStalls() {
  g_main_context_set_poll_func(nullptr, poll_);
  active = nullptr;
}

void LoopStalls::begin() {
  since_ = std::chrono::steady_clock::now();
  flushesBefore_ = files_.flushSeconds();
}

LoopStalls::Stretch LoopStalls::current() const {
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - since_;
  return {took.count(), files_.flushSeconds() - flushesBefore_};
}

int LoopStalls::poll(GPollFD* descriptors, guint count, int timeout) {
  active->stretches_.push_back(active->current());
  const int ready = active->poll_(descriptors, count, timeout);
  active->begin();
  return ready;
}

double LoopStalls::longest() const {
  double most = current().seconds;
  for (const Stretch& stretch : stretches_) most = std::max(most, stretch.seconds);
  return most;
}

double LoopStalls::longestWithoutFlushes() const {
  const Stretch now = current();
  double most = now.seconds - now.flushes;
  for (const Stretch& stretch : stretches_)
    most = std::max(most, stretch.seconds - stretch.flushes);
  return most;
}

}  // namespace fexora::bench
