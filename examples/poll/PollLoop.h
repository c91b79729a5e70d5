// A run loop on poll(2), for hosts without a toolkit: the library then needs no GLib.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include <fexora/fexora.h>

class PollLoop final : public fexora::RunLoop {
 public:
  PollLoop();
  ~PollLoop() override;

  double monotonicSeconds() override;
  double wallSeconds() override;
  std::shared_ptr<fexora::Timer> scheduleTimer(double seconds, Function function) override;
  void post(Function function) override;
  std::unique_ptr<fexora::DescriptorWatch> watchReadable(int descriptor,
                                                         Function function) override;
  void runUntil(const std::function<bool()>& done) override;

 private:
  class OneShot;
  class Watch;

  void wait();
  void runPosted();
  Function takePosted();
  void runDue();

  int wake_;  // an eventfd that post() writes
  std::mutex mutex_;
  std::deque<Function> posted_;  // under mutex_
  std::multimap<double, std::shared_ptr<OneShot>> timers_;
  std::map<int, std::shared_ptr<Function>> watches_;
};
