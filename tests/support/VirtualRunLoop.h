// A run loop whose time stands still until a test moves it: nothing in it can wait.
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <memory>
#include <mutex>

#include "fexora/platform/loop/RunLoop.h"

namespace fexora::test {

class VirtualRunLoop final : public RunLoop {
 public:
  double monotonicSeconds() override { return now_; }
  double wallSeconds() override { return wall_; }
  std::shared_ptr<Timer> scheduleTimer(double seconds, Function function) override;
  void post(Function function) override;
  // Never becomes readable: events come from the virtual folder watch and transport.
  std::unique_ptr<DescriptorWatch> watchReadable(int descriptor, Function function) override;
  // Runs what is due now, then moves the time from timer to timer; fails the test when nothing is
  // left that could make `done` true.
  void runUntil(const std::function<bool()>& done) override;

  // Moves both clocks and runs what falls due on the way, each at its own moment.
  void advance(double seconds);
  // Runs what has been posted.
  void drain();
  // Timers that would still fire.
  std::size_t timers() const;
  // Moves the wall clock alone, as a person or a time service does.
  void setWall(double seconds) { wall_ = seconds; }

 private:
  class VirtualTimer;
  bool fireNext(double until);

  double now_ = 1000;
  double wall_ = 1'790'000'000;
  std::multimap<double, std::shared_ptr<VirtualTimer>> timers_;  // by due time
  std::mutex mutex_;
  std::deque<Function> posted_;  // under mutex_
};

}  // namespace fexora::test
