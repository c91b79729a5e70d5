// bench_host N: what a host with N currencies lives with.
#include <cstdio>
#include <cstdlib>

#include "bench/host/Host.h"

int main(int count, char** words) {
  const long n = count == 2 ? std::strtol(words[1], nullptr, 10) : 0;
  if (n < 2 || n > 100'000) {
    std::fputs("bench_host: expected a number of currencies from 2 to 100000\n", stderr);
    return 2;
  }
  const fexora::bench::World world(static_cast<std::size_t>(n));
  static fexora::bench::TimedFiles files;
  fexora::Platform::process().files = &files;
  fexora::bench::benchMemory(world);
  fexora::bench::benchRefresh(world, files);
  fexora::bench::benchTyping(world, files);
  return 0;
}
