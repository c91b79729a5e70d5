// What a host lives with: memory while idle, and how long its main loop stands still.
#pragma once

#include "bench/host/TimedFiles.h"
#include "bench/support/World.h"

namespace fexora::bench {

// Memory of the rate engine and of the store, per currency.
void benchMemory(const World& world);
// The loop while rates arrive from the service. `files` are the process's.
void benchRefresh(const World& world, const TimedFiles& files);
// The loop while someone types an amount.
void benchTyping(const World& world, const TimedFiles& files);

}  // namespace fexora::bench
