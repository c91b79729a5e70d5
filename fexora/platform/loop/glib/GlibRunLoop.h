// The run loop on GLib's default main context, which GTK and Qt hosts iterate.
#pragma once

#include <cstddef>
#include <deque>
#include <mutex>

#include "fexora/platform/loop/RunLoop.h"
#include "fexora/platform/loop/WakeUp.h"

namespace fexora {

class GlibRunLoop final : public RunLoop {
 public:
  GlibRunLoop();

  double monotonicSeconds() override;
  double wallSeconds() override;
  std::shared_ptr<Timer> scheduleTimer(double seconds, Function function) override;
  void post(Function function) override;
  std::unique_ptr<DescriptorWatch> watchReadable(int descriptor, Function function) override;
  void runUntil(const std::function<bool()>& done) override;

 private:
  void runPosted();
  std::size_t postedCount();
  Function takePosted();

  std::mutex mutex_;
  std::deque<Function> posted_;  // under mutex_
  const WakeUp wake_;            // readable while there are any, for whichever loop waits
};

}  // namespace fexora
