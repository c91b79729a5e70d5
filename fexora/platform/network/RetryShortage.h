// For a thread that must tell the main thread something and finds no memory for it.
#pragma once

#include <chrono>
#include <new>
#include <thread>

#include "fexora/platform/base/Limits.h"

namespace fexora {

// Calls `attempt` until it ends without std::bad_alloc, `isVain` answers true, or the time that a
// request may take is over. Sleeps between two calls: not for the main thread.
template <class Attempt, class IsVain>
void retryShortage(Attempt attempt, IsVain isVain) {
  constexpr std::chrono::milliseconds kPause(50);
  const auto end =
      std::chrono::steady_clock::now() + std::chrono::duration<double>(limits::kRequestSeconds);
  while (std::chrono::steady_clock::now() < end && !isVain()) {
    try {
      return attempt();
    } catch (const std::bad_alloc&) {
      std::this_thread::sleep_for(kPause);
    }
  }
}

}  // namespace fexora
