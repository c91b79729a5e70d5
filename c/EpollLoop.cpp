#include "c/EpollLoop.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <utility>

#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/loop/Clocks.h"

namespace fexora::c {
namespace {

// More are called in the next round; a session has five.
constexpr std::size_t kEvents = 16;
// A loop that always has more to do gives its caller a turn after so many rounds.
constexpr int kRounds = 64;
constexpr double kLongest = 1e8;

}  // namespace

class EpollLoop::OneShot final : public Timer {
 public:
  explicit OneShot(Function call) : function(std::move(call)) {}
  // Its place in the loop stays until its time; there is nothing to call then.
  void invalidate() override { std::exchange(function, nullptr); }
  bool isValid() const override { return function != nullptr; }
  Function function;
};

class EpollLoop::Watch final : public DescriptorWatch {
 public:
  Watch(EpollLoop& loop, int descriptor) : loop_(loop), descriptor_(descriptor) {}
  ~Watch() override {
    loop_.watches_.erase(descriptor_);
    epoll_ctl(loop_.epoll_, EPOLL_CTL_DEL, descriptor_, nullptr);
  }

 private:
  EpollLoop& loop_;
  const int descriptor_;
};

EpollLoop::EpollLoop(Log& log)
    : log_(log),
      epoll_(epoll_create1(EPOLL_CLOEXEC)),
      timer_(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)) {
  if (isOpen()) {
    add(timer_);
    add(wake_.descriptor());
  }
}

EpollLoop::~EpollLoop() {
  if (timer_ >= 0) ::close(timer_);
  if (epoll_ >= 0) ::close(epoll_);
}

bool EpollLoop::add(int descriptor) {
  epoll_event event{};
  event.events = EPOLLIN;
  event.data.fd = descriptor;
  return epoll_ctl(epoll_, EPOLL_CTL_ADD, descriptor, &event) == 0;
}

double EpollLoop::monotonicSeconds() {
  return monotonicClockSeconds();
}

double EpollLoop::wallSeconds() {
  return wallClockSeconds();
}

std::shared_ptr<Timer> EpollLoop::scheduleTimer(double seconds, Function function) {
  auto timer = std::make_shared<OneShot>(std::move(function));
  const double wait = seconds > 0 ? std::min(seconds, kLongest) : 0;  // not-a-number: at once
  timers_.emplace(monotonicSeconds() + wait, timer);
  arm();
  return timer;
}

void EpollLoop::arm() {
  itimerspec time{};
  if (!timers_.empty()) {
    const double left = std::max(timers_.begin()->first - monotonicSeconds(), 0.0);
    const double whole = std::floor(left);
    time.it_value.tv_sec = static_cast<time_t>(whole);
    // One more, since nothing at all would stop the timer.
    time.it_value.tv_nsec = std::min(static_cast<long>((left - whole) * 1e9) + 1, 999'999'999L);
  }
  timerfd_settime(timer_, 0, &time, nullptr);
}

void EpollLoop::post(Function function) {
  {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(function));
  }
  wake_.wake();
}

std::unique_ptr<DescriptorWatch> EpollLoop::watchReadable(int descriptor, Function function) {
  auto shared = std::make_shared<Function>(std::move(function));
  auto watch = std::make_unique<Watch>(*this, descriptor);
  watches_[descriptor] = std::move(shared);
  return add(descriptor) ? std::move(watch) : nullptr;
}

void EpollLoop::runReady() {
  for (int round = 0; round < kRounds && run(0) > 0; ++round) {
  }
}

void EpollLoop::runUntil(const std::function<bool()>& done) {
  while (!done()) run(-1);
}

int EpollLoop::run(int milliseconds) {
  std::array<epoll_event, kEvents> events{};
  const int count = epoll_wait(epoll_, events.data(), kEvents, milliseconds);
  for (int i = 0; i < count; ++i) called(events[static_cast<std::size_t>(i)].data.fd);
  return count;
}

void EpollLoop::called(int descriptor) {
  if (descriptor == timer_) return runDue();
  if (descriptor == wake_.descriptor()) return runPosted();
  const auto at = watches_.find(descriptor);  // a function before may have ended it
  if (at == watches_.end()) return;
  const auto function = at->second;
  call(*function);
}

void EpollLoop::runPosted() {
  wake_.clear();
  std::deque<Function> functions;
  {
    const std::lock_guard lock(mutex_);
    functions.swap(posted_);
  }
  for (const Function& function : functions) call(function);
}

void EpollLoop::runDue() {
  std::uint64_t count = 0;
  [[maybe_unused]] const ssize_t got = ::read(timer_, &count, sizeof count);
  while (!timers_.empty() && timers_.begin()->first <= monotonicSeconds()) {
    const auto timer = timers_.begin()->second;
    timers_.erase(timers_.begin());
    if (const Function function = std::exchange(timer->function, nullptr)) call(function);
  }
  arm();
}

void EpollLoop::call(const Function& function) {
  quietly(log_, "A function that the loop called", function);
}

}  // namespace fexora::c
