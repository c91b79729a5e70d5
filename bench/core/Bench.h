// What the core's benchmarks share: a process of `n` currencies.
#pragma once

#include <string>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::bench {

// n codes, the first of them "USD" and "EUR", the rest made up.
struct World {
  explicit World(std::size_t n);
  World(const World&) = delete;
  World& operator=(const World&) = delete;
  ~World();

  std::vector<std::string> codes;
  std::vector<double> values;       // units that one US dollar buys
  std::vector<USDRateRef> records;  // the same as the service brings them
  std::string folder;               // scratch: the container, and the catalogue that was used
};

void benchRates(const World& world);   // derivation, pair look-up, conversion
void benchStore(const World& world);   // save, read, read again
void benchAnswer(const World& world);  // the service's answer into records

}  // namespace fexora::bench
