// Property-list values at random, the same for the same seed everywhere.
#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "fexora/platform/values/Value.h"

namespace fexora::test {

class RandomValues {
 public:
  explicit RandomValues(std::uint64_t seed) : engine_(seed) {}

  // Below `bound`, which is not 0.
  std::uint64_t number(std::uint64_t bound) { return engine_() % bound; }
  // Of characters that XML escapes or that take several bytes, beside plain ones.
  std::string text();
  Value leaf();
  // Any value that can be written, with at most `depth` containers in each other.
  Value value(int depth);
  // With up to `keys` entries.
  Dictionary dictionary(std::uint64_t keys, int depth);

 private:
  std::mt19937_64 engine_;
};

}  // namespace fexora::test
