#include "fexora/platform/loop/RunLoop.h"

namespace fexora {

Timer::~Timer() = default;
DescriptorWatch::~DescriptorWatch() = default;
RunLoop::~RunLoop() = default;

}  // namespace fexora
