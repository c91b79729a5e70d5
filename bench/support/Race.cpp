#include "bench/support/Race.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace fexora::bench {
namespace {

using Clock = std::chrono::steady_clock;

volatile double sink = 0;

double percentile(const std::vector<double>& sorted, double share) {
  return sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1))];
}

std::string timeText(double seconds) {
  const char* units[] = {"s", "ms", "µs", "ns"};
  int unit = 0;
  while (seconds < 1 && unit < 3) {
    seconds *= 1000;
    ++unit;
  }
  char text[32];
  std::snprintf(text, sizeof text, "%.3g %s", seconds, units[unit]);
  return text;
}

}  // namespace

Race& Race::add(std::string name, std::function<double()> run, double batch) {
  ways_.push_back({std::move(name), std::move(run), batch, {}});
  return *this;
}

void Race::run(double seconds) {
  for (Way& way : ways_) sink = sink + way.run();  // warm
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  do {
    for (Way& way : ways_) {
      const auto begin = Clock::now();
      sink = sink + way.run();
      const std::chrono::duration<double> took = Clock::now() - begin;
      way.times.push_back(took.count() / way.batch);
    }
  } while (Clock::now() < end || ways_.front().times.size() < 5);
  double limit = 0;
  std::printf("%s\n", title_.c_str());
  for (Way& way : ways_) {
    std::sort(way.times.begin(), way.times.end());
    const double median = percentile(way.times, 0.5);
    if (limit == 0) limit = median;
    std::printf("  %-44s %10s  [%s … %s]  %8.2f\n", way.name.c_str(), timeText(median).c_str(),
                timeText(percentile(way.times, 0.1)).c_str(),
                timeText(percentile(way.times, 0.9)).c_str(), median / limit);
  }
  std::fflush(stdout);
}

}  // namespace fexora::bench
