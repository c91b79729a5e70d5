// Where a benchmark's figures go: one line of text for people on standard output, and one JSON
// object a line appended to the file that the environment's FEXORA_BENCH_RESULTS names, if it does.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace fexora::bench {

// Times in seconds.
struct Timing {
  double median;
  double p10;
  double p90;
  double ratio;  // of the median to the limit's
  std::size_t runs;
};

// `limit` is the limit's median, or 0 for the limit itself.
Timing timingOf(std::vector<double> times, double limit);

// "1.23 ms".
std::string timeText(double seconds);

void reportTiming(std::string_view job, std::size_t n, std::string_view way, const Timing& timing);
// A figure that is no time of a race, like bytes; `unit` is "s" for a time.
void reportFigure(std::string_view job, std::size_t n, std::string_view what, double value,
                  std::string_view unit);

}  // namespace fexora::bench
