// bench_windows FOLDER: the two windows as a person meets them, against an empty window of the same
// toolkit and against other desktops' calculators.
//
// FOLDER is what bench/seed made. Wants a display of its own, without a window manager, and a
// session bus; bench/run gives it both.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "bench/programs/Child.h"
#include "bench/support/Race.h"
#include "bench/support/Results.h"
#include "bench/windows/Display.h"
#include "bench/windows/Running.h"

namespace fexora::bench {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 20s;

struct Program {
  std::string name;
  std::vector<std::string> words;
};

struct Places {
  std::string bin;
  std::string folder;
  // A store of one's own for each measurement, of n currencies, all selected.
  std::string container(std::size_t n) const { return folder + "/windows-" + std::to_string(n); }
};

constexpr std::size_t kCurrencies = 354;
constexpr std::size_t kMany = 10'000;

Program converter(const Places& places) {
  return {"fexora-converter", {places.bin + "/fexora-converter"}};
}
Program today(const Places& places) {
  return {"fexora-today", {places.bin + "/fexora-today"}};
}

std::vector<Program> programs(const Places& places) {
  const std::string empty = places.bin + "/bench_empty_window";
  std::vector<Program> all = {{"an empty Qt window", {empty}},
                              {"the same with a field of text", {empty, "field"}},
                              converter(places),
                              today(places)};
  for (const char* peer : {"qalculate-gtk", "gnome-calculator"}) {
    if (run({{peer, "--version"}, ""}).ran) {
      all.push_back({peer, {peer}});
    } else {
      std::printf("  left out, does not run here: %s\n", peer);
    }
  }
  return all;
}

// A program with its window.
class Shown {
 public:
  // Ends the benchmark, with a reason, when no window comes.
  Shown(Display& display, const Program& program) : running_((display.forget(), program.words)) {
    const auto window = display.mapped(kPatience);
    if (!window) {
      std::fprintf(stderr, "bench_windows: %s showed no window\n", program.name.c_str());
      std::exit(1);  // NOLINT(concurrency-mt-unsafe): there is one thread
    }
    window_ = *window;
  }
  const Running& running() const { return running_; }
  xcb_window_t window() const { return window_; }

 private:
  Running running_;
  xcb_window_t window_ = 0;
};

void raceStarts(Display& display, const std::vector<Program>& all) {
  Race race("from exec to the window on the screen");
  std::unique_ptr<Shown> shown;
  race.before([&] { shown.reset(); });
  for (const Program& program : all) {
    race.add(program.name, [&display, &shown, &program] {
      shown.reset();
      shown = std::make_unique<Shown>(display, program);
      return 0.0;
    });
  }
  race.run(30);
}

void reportMemory(Display& display, const std::vector<Program>& all) {
  const std::string job = "memory of a window at rest";
  std::printf("%s\n", job.c_str());
  double limit = 0;
  for (const Program& program : all) {
    std::array<double, 3> sizes{};
    for (double& size : sizes) {
      const Shown shown(display, program);
      shown.running().waitUntilSettled();
      size = shown.running().proportionalMiB();
    }
    std::sort(sizes.begin(), sizes.end());
    if (limit == 0) limit = sizes[1];
    reportFigure(job, 0, program.name, sizes[1], "MiB");
    reportFigure(job, 0, program.name + ", ratio", sizes[1] / limit, "");
  }
}

// Does `act` 60 times, and tells how long each took until all of it was painted.
std::vector<double> untilPainted(Display& display, const std::function<void(int)>& act) {
  std::vector<double> times;
  for (int i = 0; i < 60; ++i) {
    display.waitForQuiet(50ms);
    const auto begin = Clock::now();
    act(i);
    if (const auto painted = display.painted(1s)) {
      times.push_back(std::chrono::duration<double>(*painted - begin).count());
    }
  }
  return times;
}

// Returns the median, for the next one's ratio.
double reportActs(Display& display, const std::string& job, std::size_t n, const Program& program,
                  double limit, const std::function<void(int)>& act) {
  const Shown shown(display, program);
  shown.running().waitUntilSettled();
  display.focus(shown.window());
  display.watch(shown.window());
  std::vector<double> times = untilPainted(display, act);
  if (times.size() < 50) {
    std::printf("  %s painted only %zu of 60 times\n", program.name.c_str(), times.size());
    if (times.empty()) return limit;
  }
  const Timing timing = timingOf(std::move(times), limit);
  reportTiming(job, n, program.name, timing);
  return timing.median;
}

void useStore(const Places& places, std::size_t n) {
  setenv("FEXORA_CONTAINER", places.container(n).c_str(), 1);
}

void reportKeys(Display& display, const Places& places) {
  // The first takes the place of what is selected; from then on a digit comes and goes.
  const auto key = [&display](int i) {
    display.press(i == 0 ? Key::one : i % 2 == 1 ? Key::two : Key::backspace);
  };
  const auto wheel = [&display](int) { display.turnWheelDown(); };
  const std::string keys = "from a key to all of it painted";
  std::printf("%s\n", keys.c_str());
  const double limit = reportActs(
      display, keys, 0,
      {"an empty Qt window with a field", {places.bin + "/bench_empty_window", "field"}}, 0, key);
  for (const std::size_t n : {kCurrencies, kMany}) {
    useStore(places, n);
    reportActs(display, keys, n, converter(places), limit, key);
  }
  const std::string turns = "from a turn of the wheel to all of it painted";
  std::printf("%s\n", turns.c_str());
  reportActs(display, turns, kMany, converter(places), 0, wheel);
  useStore(places, kCurrencies);
}

void reportRest(Display& display, const Places& places) {
  const std::string job = "times woken in 10 seconds without the focus";
  std::printf("%s\n", job.c_str());
  const Program both[] = {converter(places), today(places)};
  const Shown first(display, both[0]);
  const Shown second(display, both[1]);
  display.focus(0);
  first.running().waitUntilSettled();
  second.running().waitUntilSettled();
  const std::uint64_t before[] = {first.running().timesWoken(), second.running().timesWoken()};
  poll(nullptr, 0, 10'000);
  reportFigure(job, 0, both[0].name, static_cast<double>(first.running().timesWoken() - before[0]),
               "");
  reportFigure(job, 0, both[1].name, static_cast<double>(second.running().timesWoken() - before[1]),
               "");
}

// A key in the converter is saved a second later; from that file's rename to the widget's paint.
void reportSave(Display& display, const Places& places) {
  const std::string job = "from one window's save to the other's paint";
  std::printf("%s\n", job.c_str());
  const Shown writer(display, converter(places));
  const Shown reader(display, today(places));
  writer.running().waitUntilSettled();
  reader.running().waitUntilSettled();
  display.focus(writer.window());
  const int queue = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  inotify_add_watch(queue, places.container(kCurrencies).c_str(), IN_MOVED_TO);
  std::vector<double> times;
  for (int i = 0; i < 15; ++i) {
    display.watch(reader.window());
    display.press(i % 2 == 0 ? Key::one : Key::two);
    pollfd wait{queue, POLLIN, 0};
    char event[4096];
    if (poll(&wait, 1, 5000) != 1 || read(queue, event, sizeof event) <= 0) break;
    const auto saved = Clock::now();
    const auto painted = display.painted(1s);
    if (!painted) break;
    // Painted before this process was told of the save: at once.
    times.push_back(std::max(0.0, std::chrono::duration<double>(*painted - saved).count()));
  }
  close(queue);
  if (times.size() < 15) {
    std::printf("  only %zu of 15 saves were seen in both\n", times.size());
    if (times.empty()) return;
  }
  reportTiming(job, kCurrencies, "fexora-today after fexora-converter",
               timingOf(std::move(times), 0));
}

}  // namespace

void benchWindows(const Places& places) {
  useStore(places, kCurrencies);
  Display display;
  const std::vector<Program> all = programs(places);
  raceStarts(display, all);
  reportMemory(display, all);
  reportKeys(display, places);
  reportRest(display, places);
  reportSave(display, places);
}

}  // namespace fexora::bench

int main(int count, char** words) {
  if (count != 2) {
    std::fputs("bench_windows: expected the folder that bench/seed made\n", stderr);
    return 2;
  }
  const std::string folder = std::filesystem::absolute(words[1]).string();
  for (const char* variable : {"LC_ALL", "WAYLAND_DISPLAY"}) unsetenv(variable);
  setenv("LANG", "en_US.UTF-8", 1);
  setenv("HOME", folder.c_str(), 1);
  setenv("XDG_DATA_HOME", (folder + "/data").c_str(), 1);
  setenv("XDG_CACHE_HOME", (folder + "/cache").c_str(), 1);
  setenv("XDG_CONFIG_HOME", (folder + "/config").c_str(), 1);
  setenv("QT_QPA_PLATFORM", "xcb", 1);
  setenv("FEXORA_RATES_URL", "http://127.0.0.1:1/rates.json", 1);
  fexora::bench::benchWindows(
      {std::filesystem::read_symlink("/proc/self/exe").parent_path().string(), folder});
  return 0;
}
