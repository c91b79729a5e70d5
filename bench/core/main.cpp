// bench_core N: the core's benchmarks in a process that knows N currencies.
#include <cstdio>
#include <cstdlib>

#include "bench/core/Bench.h"

int main(int count, char** words) {
  const long n = count == 2 ? std::strtol(words[1], nullptr, 10) : 0;
  if (n < 2 || n > 100'000) {
    std::fputs("bench_core: expected a number of currencies from 2 to 100000\n", stderr);
    return 2;
  }
  const fexora::bench::World world(static_cast<std::size_t>(n));
  fexora::bench::benchRates(world);
  fexora::bench::benchStore(world);
  fexora::bench::benchAnswer(world);
  return 0;
}
