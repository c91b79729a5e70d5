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
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
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
  explicit Unflushed(std::string_view without)
      : without_(without == "file-flush" ? FileStatus::Type::file : FileStatus::Type::folder) {}
  std::error_code flush(Handle handle) override {
    return status(handle)->type == without_ ? std::error_code() : PosixFiles::flush(handle);
  }

 private:
  FileStatus::Type without_;
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
  long number = content.find("Fraction") != nullptr ? static_cast<long>(store.fraction()) : 0;
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
  print(store.loadProblem().empty() ? "Fraction " + std::to_string(store.fraction()) + "\n"
                                    : "nothing: " + store.loadProblem() + "\n");
  return 0;
}

int watch() {
  const std::string path = storeManager().fileURL();
  const std::string other = path + ".other";
  for (const int number : {7, 8}) {
    bool isTold = false;
    const auto observation = NotificationCenter::defaultCenter().addObserver(
        fileWatcherUpdate, [&isTold] { isTold = true; });
    std::ofstream(other, std::ios::binary)
        << writePropertyList(Dictionary{{"Fraction", number}}).bytes;
    if (std::rename(other.c_str(), path.c_str()) != 0) return 1;
    RunLoop::process().runUntil([&] { return isTold && storeManager().fraction() == number; });
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
  std::string told;
  rateManager().loadRates(std::nullopt, [&](bool fromCache, const ResponseError* error) {
    if (fromCache) return;
    const auto rates = storeManager().loadUSDRates();
    told = error != nullptr ? std::string("error ") + text(error->kind)
                            : "rates " + std::to_string(rates ? rates->size() : 0);
  });
  RunLoop::process().runUntil([&] { return !told.empty(); });
  print(told + "\n");
  return told.starts_with("error") || !storeManager().saveProblem().empty() ? 1 : 0;
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
  if (job == "tell" && count > 2) return saveWithTimes(std::strtol(words[2], nullptr, 10));
  if (job == "save" && count > 2) return save(std::strtol(words[2], nullptr, 10));
  std::fputs("reliability_saver: see the head of its source\n", stderr);
  return 2;
}
