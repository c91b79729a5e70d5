#include "fexora/platform/loop/Clocks.h"

#include <chrono>

namespace fexora {
namespace {

template <class Clock>
double secondsOf() noexcept {
  return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

}  // namespace

double monotonicClockSeconds() noexcept {
  return secondsOf<std::chrono::steady_clock>();
}

double wallClockSeconds() noexcept {
  return secondsOf<std::chrono::system_clock>();
}

}  // namespace fexora
