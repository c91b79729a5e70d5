#include "PollLoop.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <exception>
#include <string>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

// What a function throws goes no further.
void call(const fexora::RunLoop::Function& function) {
  try {
    function();
  } catch (const std::exception& error) {
    fexora::Platform::process().log->write(std::string("A function threw: ") + error.what());
  } catch (...) {
    fexora::Platform::process().log->write("A function threw");
  }
}

}  // namespace

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
  timers_.emplace(monotonicSeconds() + (seconds > 0 ? seconds : 0), timer);
  return timer;
}

void PollLoop::post(Function function) {
  const std::lock_guard lock(mutex_);
  posted_.push_back(std::move(function));
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
    milliseconds = static_cast<int>(std::ceil(std::clamp(left, 0.0, 1e6) * 1000));
  }
  if (poll(descriptors.data(), descriptors.size(), milliseconds) <= 0) return;
  for (const pollfd& ready : descriptors) {
    if (ready.revents == 0) continue;
    const auto at = watches_.find(ready.fd);  // a function before may have ended it
    if (at == watches_.end()) continue;
    const auto function = at->second;
    call(*function);
  }
}

// One by one: a function may run the loop, and what was posted before is called in there.
void PollLoop::runPosted() {
  std::size_t left = 0;
  {
    const std::lock_guard lock(mutex_);
    left = posted_.size();
  }
  for (; left > 0; --left) {
    const Function function = takePosted();
    if (!function) return;
    call(function);
  }
}

// The wake-up lasts until the last one is taken.
PollLoop::Function PollLoop::takePosted() {
  const std::lock_guard lock(mutex_);
  if (posted_.empty()) return {};
  Function function = std::move(posted_.front());
  posted_.pop_front();
  std::uint64_t count = 0;
  if (posted_.empty()) [[maybe_unused]]
    const auto got = read(wake_, &count, sizeof count);
  return function;
}

void PollLoop::runDue() {
  while (!timers_.empty() && timers_.begin()->first <= monotonicSeconds()) {
    const auto timer = timers_.begin()->second;
    timers_.erase(timers_.begin());
    if (const Function function = std::exchange(timer->function, nullptr)) call(function);
  }
}
