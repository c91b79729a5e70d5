// A process that knows `n` currencies and has a container folder of its own.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::bench {

// n codes, the first of them "USD" and "EUR", the rest made up. One a process, made before anything
// else uses the library; the shared catalogue and the shared store are of this world.
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

// The service's answer with these rates.
std::string answerOf(const World& world);

}  // namespace fexora::bench
