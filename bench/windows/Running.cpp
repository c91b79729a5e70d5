#include "bench/windows/Running.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <thread>

#include <sys/wait.h>

#include "bench/programs/Child.h"

namespace fexora::bench {
namespace {

std::string folderOf(pid_t process) {
  return "/proc/" + std::to_string(process) + "/";
}

// The sum of the figures that follow the words that begin with `name`.
std::uint64_t figure(const std::string& path, const std::string& name) {
  std::ifstream file(path);
  std::uint64_t sum = 0;
  for (std::string word; file >> word;) {
    if (!word.starts_with(name)) continue;
    std::uint64_t value = 0;
    if (file >> value) sum += value;
  }
  return sum;
}

std::uint64_t processorTime(pid_t process) {
  std::uint64_t sum = 0;
  for (const auto& thread : std::filesystem::directory_iterator(folderOf(process) + "task")) {
    std::ifstream file(thread.path() / "schedstat");  // nanoseconds first
    std::uint64_t taken = 0;
    if (file >> taken) sum += taken;
  }
  return sum;
}

}  // namespace

Running::Running(const std::vector<std::string>& words) : process_(start({words, ""})) {}

Running::~Running() {
  if (process_ < 0) return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
}

void Running::waitUntilSettled() const {
  using namespace std::chrono_literals;
  constexpr int kLooksASecond = 5;
  std::uint64_t before = processorTime(process_);
  for (int look = 0, quiet = 0; look < 20 * kLooksASecond && quiet < kLooksASecond; ++look) {
    std::this_thread::sleep_for(1000ms / kLooksASecond);
    const std::uint64_t now = processorTime(process_);
    quiet = now == before ? quiet + 1 : 0;
    before = now;
  }
}

double Running::proportionalMiB() const {
  return static_cast<double>(figure(folderOf(process_) + "smaps_rollup", "Pss:")) / 1024;
}

std::uint64_t Running::timesWoken() const {
  std::uint64_t sum = 0;
  for (const auto& thread : std::filesystem::directory_iterator(folderOf(process_) + "task")) {
    const std::string status = (thread.path() / "status").string();
    sum +=
        figure(status, "voluntary_ctxt_switches:") + figure(status, "nonvoluntary_ctxt_switches:");
  }
  return sum;
}

}  // namespace fexora::bench
