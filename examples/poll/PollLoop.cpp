#include "PollLoop.h"

#include <chrono>
#include <cmath>
#include <cstdint>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

class PollLoop::OneShot final : public fexora::Timer {
 public:
  explicit OneShot(Function call) : function(std::move(call)) {}
  void invalidate() override { function = nullptr; }
  bool isValid() const override { return function != nullptr; }
  Function function;
};

class PollLoop::Watch final : public fexora::DescriptorWatch {
 public:
  Watch(PollLoop& loop, int descriptor) : loop_(loop), descriptor_(descriptor) {}
  ~Watch() override { loop_.watches_.erase(descriptor_); }

 private:
  PollLoop& loop_;
  int descriptor_;
};

PollLoop::PollLoop() : wake_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}
PollLoop::~PollLoop() {
  close(wake_);
}

double PollLoop::monotonicSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double PollLoop::wallSeconds() {
  return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

std::shared_ptr<fexora::Timer> PollLoop::scheduleTimer(double seconds, Function function) {
  auto timer = std::make_shared<OneShot>(std::move(function));
  timers_.emplace(monotonicSeconds() + seconds, timer);
  return timer;
}

void PollLoop::post(Function function) {
  {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(function));
  }
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = write(wake_, &one, sizeof one);
}

std::unique_ptr<fexora::DescriptorWatch> PollLoop::watchReadable(int descriptor,
                                                                 Function function) {
  watches_[descriptor] = std::make_shared<Function>(std::move(function));
  return std::make_unique<Watch>(*this, descriptor);
}

void PollLoop::runUntil(const std::function<bool()>& done) {
  while (!done()) {
    wait();
    runPosted();
    runDue();
  }
}

void PollLoop::wait() {
  std::vector<pollfd> descriptors = {{wake_, POLLIN, 0}};
  for (const auto& [descriptor, function] : watches_) {
    descriptors.push_back({descriptor, POLLIN, 0});
  }
  int milliseconds = -1;
  if (!timers_.empty()) {
    const double left = timers_.begin()->first - monotonicSeconds();
    milliseconds = static_cast<int>(std::ceil(std::max(left, 0.0) * 1000));
  }
  if (poll(descriptors.data(), descriptors.size(), milliseconds) <= 0) return;
  std::uint64_t count = 0;
  [[maybe_unused]] const auto got = read(wake_, &count, sizeof count);
  for (const pollfd& ready : descriptors) {
    if (ready.revents == 0) continue;
    const auto at = watches_.find(ready.fd);  // a function before may have ended it
    if (at == watches_.end()) continue;
    const auto function = at->second;
    (*function)();
  }
}

void PollLoop::runPosted() {
  std::vector<Function> functions;
  {
    const std::lock_guard lock(mutex_);
    functions.swap(posted_);
  }
  for (const Function& function : functions) function();
}

void PollLoop::runDue() {
  while (!timers_.empty() && timers_.begin()->first <= monotonicSeconds()) {
    const auto timer = timers_.begin()->second;
    timers_.erase(timers_.begin());
    if (const Function function = std::exchange(timer->function, nullptr)) function();
  }
}
