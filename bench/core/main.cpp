// bench_core N: the core's benchmarks in a process that knows N currencies; bench_core amounts
// and bench_core history: those in which the number of currencies plays no part.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bench/core/Bench.h"

int main(int count, char** words) {
  if (count == 2 && std::strcmp(words[1], "amounts") == 0) {
    fexora::bench::benchAmounts();
    return 0;
  }
  if (count == 2 && std::strcmp(words[1], "history") == 0) {
    fexora::bench::benchHistory();
    return 0;
  }
  const long n = count == 2 ? std::strtol(words[1], nullptr, 10) : 0;
  if (n < 2 || n > 100'000) {
    std::fputs(
        "bench_core: expected \"amounts\", \"history\" or a number of currencies from 2 to "
        "100000\n",
        stderr);
    return 2;
  }
  const fexora::bench::World world(static_cast<std::size_t>(n));
  fexora::bench::benchRates(world);
  fexora::bench::benchStore(world);
  fexora::bench::benchAnswer(world);
  return 0;
}
