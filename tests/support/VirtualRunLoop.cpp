#include "tests/support/VirtualRunLoop.h"

#include <algorithm>
#include <utility>

#include <gtest/gtest.h>

namespace fexora::test {

class VirtualRunLoop::VirtualTimer final : public Timer {
 public:
  explicit VirtualTimer(Function call) : function(std::move(call)) {}
  void invalidate() override { valid = false; }
  bool isValid() const override { return valid; }

  Function function;
  bool valid = true;
};

std::shared_ptr<Timer> VirtualRunLoop::scheduleTimer(double seconds, Function function) {
  return timers_.emplace(now_ + seconds, std::make_shared<VirtualTimer>(std::move(function)))
      ->second;
}

std::size_t VirtualRunLoop::timers() const {
  return static_cast<std::size_t>(std::count_if(
      timers_.begin(), timers_.end(), [](const auto& timer) { return timer.second->valid; }));
}

void VirtualRunLoop::post(Function function) {
  const std::lock_guard lock(mutex_);
  posted_.push_back(std::move(function));
}

std::unique_ptr<DescriptorWatch> VirtualRunLoop::watchReadable(int /*descriptor*/,
                                                               Function /*function*/) {
  return std::make_unique<DescriptorWatch>();
}

void VirtualRunLoop::drain() {
  for (;;) {
    std::unique_lock lock(mutex_);
    if (posted_.empty()) return;
    const Function function = std::move(posted_.front());
    posted_.pop_front();
    lock.unlock();
    function();
  }
}

bool VirtualRunLoop::fireNext(double until) {
  drain();
  std::erase_if(timers_, [](const auto& timer) { return !timer.second->valid; });
  if (timers_.empty() || timers_.begin()->first > until) return false;
  const auto [due, timer] = *timers_.begin();
  timers_.erase(timers_.begin());
  wall_ += due - now_;
  now_ = due;
  timer->valid = false;
  timer->function();
  drain();
  return true;
}

void VirtualRunLoop::advance(double seconds) {
  const double until = now_ + seconds;
  while (fireNext(until)) {
  }
  wall_ += until - now_;
  now_ = until;
}

void VirtualRunLoop::runUntil(const std::function<bool()>& done) {
  drain();
  while (!done()) {
    if (fireNext(now_ + 1e9)) continue;
    ADD_FAILURE() << "the loop has nothing left to run";
    return;
  }
}

}  // namespace fexora::test
