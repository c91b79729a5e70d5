#include "tests/network/NetworkTest.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <utility>

#include "fexora/platform/network/ShownAddress.h"

namespace fexora::test {
namespace {

constexpr double kTick = 0.001;

// Ticks on the run loop for as long as it lives.
class Ticker {
 public:
  Ticker(RunLoop& loop, Outcome& outcome) : loop_(loop), outcome_(outcome) { schedule(); }
  Ticker(const Ticker&) = delete;
  Ticker& operator=(const Ticker&) = delete;
  ~Ticker() { timer_->invalidate(); }

 private:
  void schedule() {
    due_ = loop_.monotonicSeconds() + kTick;
    timer_ = loop_.scheduleTimer(kTick, [this] {
      ++outcome_.ticks;
      outcome_.longestStall = std::max(outcome_.longestStall, loop_.monotonicSeconds() - due_);
      schedule();
    });
  }

  RunLoop& loop_;
  Outcome& outcome_;
  double due_ = 0;
  std::shared_ptr<Timer> timer_;
};

std::size_t statusKilobytes(const std::string& name) {
  std::ifstream in("/proc/self/status");
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with(name)) return std::stoul(line.substr(name.size() + 1));
  }
  ADD_FAILURE() << "no " << name;
  return 0;
}

}  // namespace

void LineLog::write(std::string_view line) {
  const std::lock_guard lock(mutex_);
  lines_.emplace_back(line);
}

std::vector<std::string> LineLog::lines() const {
  const std::lock_guard lock(mutex_);
  return lines_;
}

NetworkTest::NetworkTest() {
  for (const char* name : {"http_proxy", "https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"}) {
    unsetenv(name);
  }
  options.cacheFolder = scratch / "cache";
  options.container = "/container";
}

NetworkTest::~NetworkTest() {
  std::cout << "longest stall of the loop: " << longestStall_ * 1000 << " ms\n";
}

CurlTransport& NetworkTest::transport() {
  if (transport_ == nullptr) {
    transport_ = CurlTransport::make(RunLoop::process(), log, Files::process(), options);
  }
  return *transport_;
}

Outcome NetworkTest::ask(const std::string& address) {
  Outcome outcome;
  RunLoop& loop = RunLoop::process();
  {
    const Ticker ticker(loop, outcome);
    NetworkManager::simpleRequest<Answer>(
        transport(), address,
        [&outcome](std::shared_ptr<Answer> record, std::optional<ResponseError> error) {
          ++outcome.completions;
          outcome.record = std::move(record);
          outcome.error = std::move(error);
        });
    EXPECT_EQ(outcome.completions, 0) << "called before the request returned";
    loop.runUntil([&] { return outcome.completions > 0; });
  }
  longestStall_ = std::max(longestStall_, outcome.longestStall);
  // A second call would be in the queue before this.
  bool later = false;
  loop.post([&] { later = true; });
  loop.runUntil([&] { return later; });
  EXPECT_EQ(outcome.completions, 1);
  EXPECT_NE(outcome.record != nullptr, outcome.error.has_value());
  if (outcome.error) {
    EXPECT_EQ(outcome.error->address, shownAddress(address));
    EXPECT_NE(outcome.error->message.find(text(outcome.error->kind)), std::string::npos);
    EXPECT_LE(outcome.error->message.size(), 500U);
    EXPECT_EQ(outcome.error->message.find('\n'), std::string::npos);
  }
  return outcome;
}

Outcome NetworkTest::askServer(const std::string& bytes) {
  server.reply("/rates.json", bytes);
  return ask(server.address("/rates.json"));
}

PeakMemory::PeakMemory() {
  std::ofstream("/proc/self/clear_refs") << "5";  // the peak starts again from here
  before_ = statusKilobytes("VmHWM:");
}

std::size_t PeakMemory::growth() const {
  return (statusKilobytes("VmHWM:") - before_) * 1024;
}

}  // namespace fexora::test
