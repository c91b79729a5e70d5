#include "bench/support/Results.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace fexora::bench {
namespace {

std::string quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

std::string member(std::string_view key, double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.9g", value);
  return ", " + quoted(key) + ": " + text;
}

void append(std::string_view job, std::size_t n, const std::string& members) {
  const char* const path = std::getenv("FEXORA_BENCH_RESULTS");
  if (path == nullptr) return;
  std::FILE* const file = std::fopen(path, "ae");
  if (file == nullptr) return;
  std::fprintf(file, "{\"job\": %s, \"n\": %zu%s}\n", quoted(job).c_str(), n, members.c_str());
  std::fclose(file);
}

std::string figureText(double value, std::string_view unit) {
  if (unit == "s") return timeText(value);
  char text[64];
  std::snprintf(text, sizeof text, "%.6g %.*s", value, static_cast<int>(unit.size()), unit.data());
  return text;
}

}  // namespace

Timing timingOf(std::vector<double> times, double limit) {
  std::sort(times.begin(), times.end());
  const auto at = [&](double share) {
    return times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
  };
  return {at(0.5), at(0.1), at(0.9), limit > 0 ? at(0.5) / limit : 1.0, times.size()};
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

void reportTiming(std::string_view job, std::size_t n, std::string_view way, const Timing& timing) {
  std::printf("  %-44.*s %10s  [%s … %s]  %8.2f\n", static_cast<int>(way.size()), way.data(),
              timeText(timing.median).c_str(), timeText(timing.p10).c_str(),
              timeText(timing.p90).c_str(), timing.ratio);
  std::fflush(stdout);
  append(job, n,
         ", \"way\": " + quoted(way) + member("median", timing.median) + member("p10", timing.p10) +
             member("p90", timing.p90) + member("ratio", timing.ratio) +
             member("runs", static_cast<double>(timing.runs)));
}

void reportFigure(std::string_view job, std::size_t n, std::string_view what, double value,
                  std::string_view unit) {
  std::printf("  %-44.*s %s\n", static_cast<int>(what.size()), what.data(),
              figureText(value, unit).c_str());
  std::fflush(stdout);
  append(job, n,
         ", \"what\": " + quoted(what) + member("value", value) + ", \"unit\": " + quoted(unit));
}

}  // namespace fexora::bench
