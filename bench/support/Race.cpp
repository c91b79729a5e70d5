#include "bench/support/Race.h"

#include <chrono>
#include <cstdio>

#include "bench/support/Results.h"

namespace fexora::bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kShortSeconds = 1e-2;

volatile double sink = 0;

}  // namespace

Race& Race::add(std::string name, std::function<double()> run, double batch) {
  ways_.push_back({std::move(name), std::move(run), batch, {}});
  return *this;
}

Race& Race::before(std::function<void()> prepare) {
  prepare_ = std::move(prepare);
  return *this;
}

void Race::time(Way& way) const {
  // A short way must not pay for the caches that the way before it has emptied.
  if (!way.times.empty() && way.times.back() * way.batch < kShortSeconds) sink = sink + way.run();
  prepare_();
  const auto begin = Clock::now();
  sink = sink + way.run();
  const std::chrono::duration<double> took = Clock::now() - begin;
  way.times.push_back(took.count() / way.batch);
}

void Race::run(double seconds) {
  for (Way& way : ways_) sink = sink + way.run();  // warm
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  do {
    for (Way& way : ways_) time(way);
  } while (Clock::now() < end || ways_.front().times.size() < 5);
  std::printf("%s", job_.c_str());
  if (n_ > 0) std::printf(", n = %zu", n_);
  std::printf("\n");
  double limit = 0;
  for (Way& way : ways_) {
    const Timing timing = timingOf(std::move(way.times), limit);
    if (limit == 0) limit = timing.median;
    reportTiming(job_, n_, way.name, timing);
  }
}

}  // namespace fexora::bench
