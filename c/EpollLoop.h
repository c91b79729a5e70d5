// A run loop that belongs to a session: epoll with one timer and one wake-up, so that a single
// descriptor tells when there is something to do.
//
// One thread at a time, any one: "main thread" of RunLoop is who holds the session. post(), the
// clocks and descriptor() may be called by all.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "fexora/platform/base/Log.h"
#include "fexora/platform/loop/RunLoop.h"
#include "fexora/platform/loop/WakeUp.h"

namespace fexora::c {

class EpollLoop final : public RunLoop {
 public:
  explicit EpollLoop(Log& log);
  ~EpollLoop() override;

  // False where the machine has no descriptor for it; the loop then calls nothing.
  bool isOpen() const noexcept { return epoll_ >= 0 && timer_ >= 0 && wake_.descriptor() >= 0; }
  // Readable while runReady() has something to do.
  int descriptor() const noexcept { return epoll_; }
  // Calls what is ready by now, without waiting.
  void runReady();

  double monotonicSeconds() override;
  double wallSeconds() override;
  std::shared_ptr<Timer> scheduleTimer(double seconds, Function function) override;
  void post(Function function) override;
  std::unique_ptr<DescriptorWatch> watchReadable(int descriptor, Function function) override;
  void runUntil(const std::function<bool()>& done) override;

 private:
  class OneShot;
  class Watch;

  int run(int milliseconds);
  bool add(int descriptor);
  void called(int descriptor);
  void runPosted();
  void runDue();
  void arm();
  void call(const Function& function);

  Log& log_;
  const int epoll_;
  const int timer_;
  const WakeUp wake_;
  std::multimap<double, std::shared_ptr<OneShot>> timers_;
  std::unordered_map<int, std::shared_ptr<Function>> watches_;
  std::mutex mutex_;
  std::deque<Function> posted_;  // under mutex_
};

}  // namespace fexora::c
