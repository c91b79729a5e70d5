// Steps that one thread hands to another, in their order. Any thread. Steps that nobody took go
// with the queue, which outlives whoever waits for one.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <utility>

namespace fexora::desktop {

class StepQueue {
 public:
  void put(std::function<void()> step) {
    const std::scoped_lock lock(mutex_);
    steps_.push_back(std::move(step));
    isThere_.notify_one();
  }
  // The oldest one, for which it waits.
  std::function<void()> take() {
    std::unique_lock lock(mutex_);
    isThere_.wait(lock, [this] { return !steps_.empty(); });
    auto step = std::move(steps_.front());
    steps_.pop_front();
    return step;
  }

 private:
  std::mutex mutex_;
  std::condition_variable isThere_;
  std::deque<std::function<void()>> steps_;
};

}  // namespace fexora::desktop
