// The process's run loop, for a test that overrides what it wants to be different.
#pragma once

#include <utility>

#include "fexora/platform/loop/RunLoop.h"

namespace fexora::test {

class ForwardingLoop : public RunLoop {
 public:
  double monotonicSeconds() override { return real_.monotonicSeconds(); }
  double wallSeconds() override { return real_.wallSeconds(); }
  std::shared_ptr<Timer> scheduleTimer(double seconds, Function function) override {
    return real_.scheduleTimer(seconds, std::move(function));
  }
  void post(Function function) override { real_.post(std::move(function)); }
  std::unique_ptr<DescriptorWatch> watchReadable(int descriptor, Function function) override {
    return real_.watchReadable(descriptor, std::move(function));
  }
  void runUntil(const std::function<bool()>& done) override { real_.runUntil(done); }

 private:
  RunLoop& real_ = RunLoop::process();
};

}  // namespace fexora::test
