// A process for the tests that kill, cut off, trace and starve one. The container is what the
// environment says.
//
//   reliability_saver save COUNT [--without file-flush|folder-flush]
//       saves COUNT times (0: without end) a number as "Fraction", with 64 KiB beside it: the one
//       that the file has, plus 1, plus 2, …; tells each number on standard output once it is
//       saved, the first one, or 0 of a new file, too
//   reliability_saver tell FIRST
//       saves FIRST, FIRST + 1, … without end, and nothing else; tells of each, in one write:
//       number, begin and end in nanoseconds of the system's monotonic clock
//   reliability_saver load
//       starts, reads the file once more, and prints what was read: "Fraction N" or "nothing:
//       REASON"
//   reliability_saver watch
//       replaces the file twice, as another process would, and prints each number once the watch
//       has brought it
//   reliability_saver refresh
//       asks the rates service once, saves what it answers, and prints "rates N" or "error KIND"
//   reliability_saver rival NAME UPDATES MEAN-SECONDS SEED plain|reconciling
//       sets a key of its own with each update, NAME with a number, and saves; updates come at
//       random, their distances exponentially distributed; stays until all is quiet
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <string_view>

#include <unistd.h>

#include "fexora/fexora.h"
#include "fexora/platform/files/PosixFiles.h"
#include "fexora/platform/network/LazyTransport.h"
#include "fexora/platform/plist/PropertyListWriter.h"

namespace {

using namespace fexora;

// What a save is worth without one of its flushes: the control of the crash tests.
class Unflushed final : public PosixFiles {
 public:
  explicit Unflushed(std::string_view without) : isFile_(without == "file-flush") {}
  std::error_code flush(Handle handle) override {
    const auto found = status(handle);
    const bool isFile = found.ok() && found->type == FileStatus::Type::file;
    return isFile == isFile_ ? std::error_code() : PosixFiles::flush(handle);
  }

 private:
  bool isFile_;
};

// In one piece, so that the reader never sees half a line.
void print(const std::string& line) {
  if (::write(STDOUT_FILENO, line.data(), line.size()) < 0) std::exit(1);
}
void tell(long number) {
  print(std::to_string(number) + "\n");
}

std::string now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return std::to_string(std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec);
}

int saveWithTimes(long number) {
  Log::setProcessSink({});
  StoreManager& store = storeManager();
  for (;; ++number) {
    const std::string begin = now();
    store.setFraction(number);
    if (!store.saveProblem().empty()) return 1;
    print(std::to_string(number) + " " + begin + " " + now() + "\n");
  }
}

int save(long count) {
  StoreManager& store = storeManager();
  Dictionary content = store.ud();
  content.set("ballast", Value(std::string(std::size_t{64} << 10, 'x')));
  if (!store.loadProblem().empty() || !store.saveProblem().empty()) return 1;
  const Value* kept = content.find("Fraction");
  long number = kept != nullptr ? static_cast<long>(store.fraction()) : 0;
  tell(number);
  store.setUd(content);
  for (long i = 0; count == 0 || i < count; ++i) {
    store.setFraction(++number);
    if (!store.saveProblem().empty()) return 1;
    tell(number);
  }
  return 0;
}

int load() {
  StoreManager& store = storeManager();
  store.loadData();  // with the first content still there
  if (!store.loadProblem().empty()) {
    std::printf("nothing: %s\n", store.loadProblem().c_str());
  } else {
    std::printf("Fraction %lld\n", static_cast<long long>(store.fraction()));
  }
  return 0;
}

int watch() {
  const StoreManager& store = storeManager();
  const std::string path = storeManager().fileURL();
  bool isTold = false;
  const auto observation = NotificationCenter::defaultCenter().addObserver(
      fileWatcherUpdate, [&isTold] { isTold = true; });
  for (const int number : {7, 8}) {
    isTold = false;
    const std::string other = path + ".other";
    std::ofstream(other, std::ios::binary)
        << writePropertyList(Dictionary{{"Fraction", number}}).bytes;
    if (std::rename(other.c_str(), path.c_str()) != 0) return 1;
    RunLoop::process().runUntil([&] { return isTold && store.fraction() == number; });
    tell(number);
  }
  return 0;
}

int refresh() {
  Platform& platform = Platform::process();
  platform.transport = new LazyTransport([&platform] {
    NetOptions options = processNetOptions();
    options.requestSeconds = 1;  // what is interrupted for ever ends with the request's time
    return LazyTransport::Host{platform.loop, platform.log, platform.files, options};
  });
  bool ended = false;
  int result = 0;
  rateManager().loadRates(std::nullopt, [&](bool fromCache, const ResponseError* error) {
    if (fromCache) return;
    ended = true;
    if (error != nullptr) {
      result = 1;
      std::printf("error %s\n", text(error->kind));
    } else {
      const auto rates = storeManager().loadUSDRates();
      std::printf("rates %zu\n", rates ? rates->size() : 0);
    }
  });
  RunLoop::process().runUntil([&] { return ended; });
  return storeManager().saveProblem().empty() ? result : 1;
}

int rival(char** words) {
  constexpr double kQuiet = 3;
  const std::string name = words[0];
  const int updates = std::atoi(words[1]);
  std::mt19937_64 engine(std::strtoull(words[3], nullptr, 10));
  std::exponential_distribution<double> distance(1 / std::atof(words[2]));
  Log::setProcessSink({});
  StoreManager& store = storeManager();
  store.setReconcilesAfterSkip(std::strcmp(words[4], "reconciling") == 0);
  RunLoop& loop = RunLoop::process();
  bool isOver = false;
  int done = 0;
  std::shared_ptr<Timer> timer;
  const std::function<void()> update = [&] {
    if (done == updates) {
      timer = loop.scheduleTimer(kQuiet, [&] { isOver = true; });
      return;
    }
    Dictionary content = store.ud();
    ++done;
    content.set(name + std::to_string(done), done);
    store.setUd(content);
    store.synchronize();
    timer = loop.scheduleTimer(distance(engine), update);
  };
  timer = loop.scheduleTimer(distance(engine), update);
  loop.runUntil([&] { return isOver; });
  return 0;
}

}  // namespace

int main(int count, char** words) {
  const std::string_view job = count > 1 ? words[1] : "";
  if (count == 5 && std::strcmp(words[3], "--without") == 0) {
    Platform::process().files = new Unflushed(words[4]);
  }
  if (job == "load") return load();
  if (job == "watch") return watch();
  if (job == "refresh") return refresh();
  if (job == "rival" && count == 7) return rival(words + 2);
  if (job == "tell" && count > 2) return saveWithTimes(std::strtol(words[2], nullptr, 10));
  if (job == "save" && count > 2) return save(std::strtol(words[2], nullptr, 10));
  std::fputs(
      "reliability_saver: save COUNT [--without FLUSH], tell FIRST, load, watch, refresh or rival "
      "…\n",
      stderr);
  return 2;
}
