#include "tests/support/VirtualRunLoop.h"

#include <utility>

#include <gtest/gtest.h>

namespace fexora::test {

class VirtualRunLoop::VirtualTimer final : public Timer {
 public:
  VirtualTimer(VirtualRunLoop& loop, std::pair<double, std::uint64_t> key, Function call)
      : function(std::move(call)), loop_(&loop), key_(std::move(key)) {}
  void invalidate() override {
    if (std::exchange(valid, false)) loop_->timers_.erase(key_);
  }
  bool isValid() const override { return valid; }

  Function function;
  bool valid = true;

 private:
  VirtualRunLoop* loop_;
  std::pair<double, std::uint64_t> key_;
};

std::shared_ptr<Timer> VirtualRunLoop::scheduleTimer(double seconds, Function function) {
  const std::pair key{now_ + seconds, ++order_};
  auto timer = std::make_shared<VirtualTimer>(*this, key, std::move(function));
  timers_.emplace(key, timer);
  return timer;
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
    Function function;
    {
      const std::lock_guard lock(mutex_);
      if (posted_.empty()) return;
      function = std::move(posted_.front());
      posted_.pop_front();
    }
    function();
  }
}

bool VirtualRunLoop::fireNext(double until) {
  drain();
  if (timers_.empty() || timers_.begin()->first.first > until) return false;
  const auto [key, timer] = *timers_.begin();
  timers_.erase(timers_.begin());
  wall_ += key.first - now_;
  now_ = key.first;
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
