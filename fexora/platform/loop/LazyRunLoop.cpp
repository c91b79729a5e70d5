#include "fexora/platform/loop/LazyRunLoop.h"

#include <utility>

#include "fexora/platform/loop/Clocks.h"

namespace fexora {
namespace {

class NeverTimer final : public Timer {
 public:
  void invalidate() override {}
  bool isValid() const override { return false; }
};

}  // namespace

LazyRunLoop::LazyRunLoop(std::function<RunLoop*()> open) : open_(std::move(open)) {}

RunLoop* LazyRunLoop::module() {
  std::call_once(opened_, [this] { module_ = open_(); });
  return module_;
}

double LazyRunLoop::monotonicSeconds() {
  return monotonicClockSeconds();
}

double LazyRunLoop::wallSeconds() {
  return wallClockSeconds();
}

std::shared_ptr<Timer> LazyRunLoop::scheduleTimer(double seconds, Function function) {
  RunLoop* const loop = module();
  if (loop == nullptr) return std::make_shared<NeverTimer>();
  return loop->scheduleTimer(seconds, std::move(function));
}

void LazyRunLoop::post(Function function) {
  if (RunLoop* const loop = module()) loop->post(std::move(function));
}

std::unique_ptr<DescriptorWatch> LazyRunLoop::watchReadable(int descriptor, Function function) {
  RunLoop* const loop = module();
  return loop != nullptr ? loop->watchReadable(descriptor, std::move(function)) : nullptr;
}

void LazyRunLoop::runUntil(const std::function<bool()>& done) {
  if (RunLoop* const loop = module()) loop->runUntil(done);
}

}  // namespace fexora
