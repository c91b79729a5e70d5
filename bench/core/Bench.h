// The core's benchmarks, each a race of our way against the limit and the peers.
#pragma once

#include "bench/support/World.h"

namespace fexora::bench {

void benchRates(const World& world);   // derivation, pair look-up, conversion
void benchStore(const World& world);   // save, read, read again
void benchAnswer(const World& world);  // the service's answer into records
void benchAmounts();                   // typed amounts
void benchHistory();                   // rates of past days

}  // namespace fexora::bench
