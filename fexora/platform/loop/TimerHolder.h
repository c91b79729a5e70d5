// The owner of one timer, which ends when another takes its place and when the owner goes.
#pragma once

#include <memory>
#include <utility>

#include "fexora/platform/loop/RunLoop.h"

namespace fexora {

// Main thread. What it held before may be destroyed by any of its operations: also from inside that
// timer's own function.
class TimerHolder {
 public:
  TimerHolder() = default;
  TimerHolder(const TimerHolder&) = delete;
  TimerHolder& operator=(const TimerHolder&) = delete;
  ~TimerHolder() { end(); }

  // Takes over from the timer that was held, which is ended first: also when there is no memory for
  // the new one.
  const std::shared_ptr<Timer>& schedule(RunLoop& loop, double seconds,
                                         RunLoop::Function function) {
    end();
    return timer_ = loop.scheduleTimer(seconds, std::move(function));
  }
  void end() {
    if (const auto timer = std::exchange(timer_, nullptr)) timer->invalidate();
  }

 private:
  std::shared_ptr<Timer> timer_;
};

}  // namespace fexora
