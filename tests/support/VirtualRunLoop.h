// A run loop whose time stands still until a test moves it: nothing in it can wait.
#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include <gtest/gtest.h>

#include "fexora/platform/loop/RunLoop.h"

namespace fexora::test {

class VirtualRunLoop final : public RunLoop {
 public:
  double monotonicSeconds() override { return now_; }
  double wallSeconds() override { return wall_; }
  std::shared_ptr<Timer> scheduleTimer(double seconds, Function function) override {
    const auto timer = std::make_shared<VirtualTimer>();
    timer->function = std::move(function);
    timers_.emplace(now_ + seconds, timer);
    return timer;
  }
  void post(Function function) override {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(function));
  }
  // Never becomes readable: events come from the virtual folder watch and transport.
  std::unique_ptr<DescriptorWatch> watchReadable(int /*descriptor*/,
                                                 Function /*function*/) override {
    return std::make_unique<DescriptorWatch>();
  }
  // Runs what is due now, then moves the time from timer to timer; fails the test when nothing is
  // left that could make `done` true.
  void runUntil(const std::function<bool()>& done) override {
    drain();
    while (!done()) {
      if (fireNext(now_ + 1e9)) continue;
      ADD_FAILURE() << "the loop has nothing left to run";
      return;
    }
  }

  // Moves both clocks and runs what falls due on the way, each at its own moment.
  void advance(double seconds) {
    const double until = now_ + seconds;
    while (fireNext(until)) {
    }
    moveTo(until);
  }
  // Runs what has been posted.
  void drain() {
    for (std::unique_lock lock(mutex_); !posted_.empty(); lock.lock()) {
      const Function function = std::move(posted_.front());
      posted_.pop_front();
      lock.unlock();
      function();
    }
  }
  // Timers that would still fire.
  std::size_t timers() const {
    return static_cast<std::size_t>(std::count_if(
        timers_.begin(), timers_.end(), [](const auto& timer) { return timer.second->valid; }));
  }
  // Moves the wall clock alone, as a person or a time service does.
  void setWall(double seconds) { wall_ = seconds; }

 private:
  struct VirtualTimer final : Timer {
    void invalidate() override { valid = false; }
    bool isValid() const override { return valid; }
    Function function;
    bool valid = true;
  };

  void moveTo(double time) {
    wall_ += time - now_;
    now_ = time;
  }
  bool fireNext(double until) {
    drain();
    std::erase_if(timers_, [](const auto& timer) { return !timer.second->valid; });
    if (timers_.empty() || timers_.begin()->first > until) return false;
    const auto timer = timers_.extract(timers_.begin());
    moveTo(timer.key());
    timer.mapped()->valid = false;
    timer.mapped()->function();
    drain();
    return true;
  }

  double now_ = 1000;
  double wall_ = 1'790'000'000;
  std::multimap<double, std::shared_ptr<VirtualTimer>> timers_;  // by due time
  std::mutex mutex_;
  std::deque<Function> posted_;  // under mutex_
};

}  // namespace fexora::test
