// A process that saves without end, a line of output after each save: the tests kill it.
#include <cstdio>
#include <cstdlib>

#include "fexora/fexora.h"

int main(int count, char** words) {
  using namespace fexora;
  Log::setProcessSink({});
  const long fraction = count > 1 ? std::strtol(words[1], nullptr, 10) : 1;
  for (;;) {
    storeManager().setFraction(fraction);
    std::puts("saved");
    std::fflush(stdout);
  }
}
