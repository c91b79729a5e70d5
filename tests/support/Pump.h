// Runs the loop for what is due now.
#pragma once

#include "fexora/platform/loop/RunLoop.h"

namespace fexora::test {

// Some whole rounds of `loop`, enough for all that the kernel has queued for its descriptors and
// for what that posts in turn. Never waits for time to pass.
inline void pump(RunLoop& loop) {
  for (int round = 0; round < 8; ++round) {
    bool isOver = false;
    loop.post([&isOver] { isOver = true; });
    loop.runUntil([&isOver] { return isOver; });
  }
}

}  // namespace fexora::test
