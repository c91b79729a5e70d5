// bench_watch: from the rename in one process to the observer in another, 10,000 times a way. The
// limit waits for inotify and reads the file; ours has the store read it and post
// "FileWatcherUpdate". Each way takes turns with the limit in a process that runs nothing else: one
// observer's threads and sources slow the loop of the next.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <poll.h>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <unistd.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/files/ReadFile.h"

#include "bench/support/Results.h"
#include "bench/support/World.h"
#include "bench/watch/Observer.h"
#include "bench/watch/Writer.h"

namespace fexora::bench {
namespace {

constexpr int kChanges = 10'000;
constexpr std::size_t kCurrencies = 339;
constexpr int kPatience = 1000;  // milliseconds
const char* const kJob = "a change in one process seen by an observer in the other";

std::string readAll(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class PlainInotify final : public Observer {
 public:
  explicit PlainInotify(const std::string& folder)
      : path_(folder + "/Store.plist"), queue_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    inotify_add_watch(queue_, folder.c_str(), IN_MOVED_TO);
  }
  ~PlainInotify() override { close(queue_); }

  std::optional<std::int64_t> observe(const std::function<void()>& change) override {
    change();
    pollfd wait{queue_, POLLIN, 0};
    char event[4096];
    if (poll(&wait, 1, kPatience) != 1 || read(queue_, event, sizeof event) <= 0) return {};
    if (readWholeFile(Files::process(), path_, limits::kStoreFileBytes)->bytes.empty()) return {};
    return now();
  }

 private:
  std::string path_;
  int queue_;
};

class StoreObserver final : public LoopObserver {
 public:
  explicit StoreObserver(const std::string& folder) {
    setenv("FEXORA_CONTAINER", folder.c_str(), 1);
    observation_ =
        NotificationCenter::defaultCenter().addObserver(fileWatcherUpdate, [this] { told(); });
    store_ = std::make_unique<StoreManager>();
  }

 private:
  NotificationCenter::Token observation_;
  std::unique_ptr<StoreManager> store_;
};

struct Contender {
  const char* name = nullptr;
  std::unique_ptr<Writer> writer;
  std::unique_ptr<Observer> observer;
  std::vector<double> times;
  int lost = 0;

  void race() {
    const auto told = observer->observe([this] { writer->replace(); });
    if (told) {
      times.push_back(static_cast<double>(*told - writer->renamedAt()) * 1e-9);
    } else {
      ++lost;
    }
  }
};

// The writers first: a process forks before it has loops.
std::vector<Contender> contenders(const std::vector<WatchPeer>& ways, const std::string& scratch,
                                  const std::string& one, const std::string& other) {
  std::vector<Contender> all(ways.size());
  const auto folderOf = [&](std::size_t i) { return scratch + "/watch-" + std::to_string(i); };
  for (std::size_t i = 0; i < ways.size(); ++i) {
    std::filesystem::create_directory(folderOf(i));
    const std::string path = folderOf(i) + "/Store.plist";
    std::ofstream(path, std::ios::binary) << one;
    all[i].name = ways[i].name;
    all[i].writer = std::make_unique<Writer>(path, other, one);
  }
  for (std::size_t i = 0; i < ways.size(); ++i) all[i].observer = ways[i].make(folderOf(i));
  return all;
}

void report(std::vector<Contender>& all) {
  std::printf("%s\n", kJob);
  double limit = 0;
  for (Contender& contender : all) {
    if (contender.times.empty()) continue;
    const Timing timing = timingOf(std::move(contender.times), limit);
    if (limit == 0) limit = timing.median;
    reportTiming(kJob, 0, contender.name, timing);
    reportFigure(kJob, 0, std::string(contender.name) + ", lost of 10,000", contender.lost, "");
  }
}

}  // namespace

void race(const WatchPeer& way) {
  const World world(kCurrencies);
  std::string contents[2];
  {
    StoreManager store;
    store.saveUSDRates(world.records, true);
    for (std::string& content : contents) {
      store.setFraction(store.fraction() == 3 ? 4 : 3);
      content = readAll(store.fileURL());
    }
  }
  const WatchPeer limit{"inotify, and the file read", &makeObserver<PlainInotify>};
  std::vector<Contender> all = contenders({limit, way}, world.folder, contents[0], contents[1]);
  for (int change = 0; change < kChanges; ++change) {
    for (Contender& contender : all) contender.race();
  }
  report(all);
}

bool raceInAProcess(const WatchPeer& way) {
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    race(way);
    std::fflush(stdout);
    _exit(0);
  }
  int status = 1;
  return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

bool benchWatch() {
  std::vector<WatchPeer> ways = {{"FileWatcherUpdate", &makeObserver<StoreObserver>}};
  ways.insert(ways.end(), WatchPeer::all().begin(), WatchPeer::all().end());
  bool isDone = true;
  for (const WatchPeer& way : ways) isDone = raceInAProcess(way) && isDone;
  return isDone;
}

}  // namespace fexora::bench

int main() {
  return fexora::bench::benchWatch() ? 0 : 1;
}
