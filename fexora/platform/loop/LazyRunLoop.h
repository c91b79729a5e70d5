// The run loop of a process that may never need one: tells the time itself, and opens the module of
// the real loop when something is to be called later.
//
// Loading GLib is a tenth of a whole start. Where the module is missing, the log says so once, and
// nothing is ever called later: timers are invalid, nothing can be watched, and runUntil returns at
// once.
#pragma once

#include <functional>
#include <memory>
#include <mutex>

#include "fexora/platform/loop/RunLoop.h"

namespace fexora {

class FEXORA_API LazyRunLoop final : public RunLoop {
 public:
  // `open` is called once, at the first need; null when there is no module. Its loop lives to the
  // end of the process.
  explicit LazyRunLoop(std::function<RunLoop*()> open);

  double monotonicSeconds() override;
  double wallSeconds() override;
  std::shared_ptr<Timer> scheduleTimer(double seconds, Function function) override;
  void post(Function function) override;
  std::unique_ptr<DescriptorWatch> watchReadable(int descriptor, Function function) override;
  void runUntil(const std::function<bool()>& done) override;

 private:
  RunLoop* module();

  std::function<RunLoop*()> open_;
  std::once_flag opened_;
  RunLoop* module_ = nullptr;
};

}  // namespace fexora
