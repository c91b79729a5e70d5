// A process that saves without end, each time another number, and tells after each save when that
// began and when it was done: the tests kill it.
//   test_saver FIRST     saves FIRST, FIRST + 1, …
// Each line, in one write: number, begin and end in nanoseconds of the system's monotonic clock.
#include <charconv>
#include <cinttypes>
#include <cstdio>
#include <ctime>
#include <string_view>

#include <unistd.h>

#include "fexora/fexora.h"

namespace {

std::int64_t now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

void tell(std::int64_t number, std::int64_t begin, std::int64_t end) {
  char line[80];
  const int size = std::snprintf(line, sizeof(line), "%" PRId64 " %" PRId64 " %" PRId64 "\n",
                                 number, begin, end);
  if (write(STDOUT_FILENO, line, static_cast<std::size_t>(size)) != size) _exit(1);
}

}  // namespace

int main(int count, char** words) {
  using namespace fexora;
  Log::setProcessSink({});
  const std::string_view word = count > 1 ? words[1] : "1";
  std::int64_t number = 1;
  std::from_chars(word.data(), word.data() + word.size(), number);
  StoreManager& store = storeManager();
  for (;; ++number) {
    const std::int64_t begin = now();
    store.setFraction(number);
    if (!store.saveProblem().empty()) return 1;
    tell(number, begin, now());
  }
}
