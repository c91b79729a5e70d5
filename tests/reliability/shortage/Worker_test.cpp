// Each allocation of the network's thread, and of the main thread where it opens the network,
// failing in turn: whoever waits is told once, and the next request works.
#include <atomic>
#include <condition_variable>
#include <csignal>
#include <deque>
#include <mutex>
#include <string_view>

#include <gtest/gtest.h>

#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/network/LazyTransport.h"
#include "fexora/platform/network/NetworkManager.h"
#include "fexora/platform/network/curl/CurlTransport.h"
#include "fexora/records/Response.h"

#include "tests/reliability/shortage/FailingNew.h"
#include "tests/support/ForwardingLoop.h"
#include "tests/support/LoopbackServer.h"
#include "tests/support/ScratchFolder.h"

namespace fexora {
namespace {

constexpr std::string_view kAnswer =
    "HTTP/1.1 200 OK\r\nETag: \"one\"\r\nContent-Length: 35\r\nConnection: close\r\n\r\n"
    "{\"rates\":[{\"code\":\"EUR\",\"rate\":1}]}";

// What the log says of it is of no interest here, and must take no memory.
class NoLog final : public Log {
 public:
  void write(std::string_view /*line*/) override {}
};

// One request, and what became of it.
struct Asked {
  Asked() = default;
  Asked(Transport& transport, const std::string& address) { ask(transport, address); }
  void ask(Transport& transport, const std::string& address) {
    NetworkManager::simpleRequest<Response>(
        transport, address, [this](const std::shared_ptr<Response>& response, const auto& error) {
          ++times;
          hasRates = response != nullptr && response->rates().size() == 1;
          EXPECT_NE(hasRates, error.has_value());
        });
  }
  int times = 0;
  bool hasRates = false;
};

// Calls with each allocation's number, alone and from then on, until `refuses` says that there was
// none with this number any more; how often there was one.
int eachNumber(const std::function<bool(std::size_t number, bool fromThenOn)>& refuses) {
  int refusals = 0;
  for (const bool fromThenOn : {false, true}) {
    for (std::size_t number = 0; refuses(number, fromThenOn); ++number) {
      ++refusals;
      if (!testing::Test::HasFailure()) continue;
      ADD_FAILURE() << "allocation " << number << (fromThenOn ? " from then on" : " alone");
      return refusals;
    }
  }
  return refusals;
}

// Goes round once in a while, to look at what no event tells of.
void runUntil(const std::function<bool()>& done) {
  RunLoop& loop = RunLoop::process();
  std::function<void()> tick;
  std::shared_ptr<Timer> timer;
  tick = [&] { timer = loop.scheduleTimer(0.001, tick); };
  tick();
  loop.runUntil(done);
  timer->invalidate();
}

TEST(WorkerShortage, IsToldOnceAndPasses) {
  const test::LoopbackServer server(kAnswer);
  const test::ScratchFolder scratch;
  NoLog log;
  NetOptions options;
  options.cacheFolder = scratch / "cache";
  options.container = "/container";
  const int refusals = eachNumber([&](std::size_t number, bool fromThenOn) {
    const auto transport = CurlTransport::make(RunLoop::process(), log, Files::process(), options);
    test::armNew(number, fromThenOn, true);
    Asked first(*transport, server.address());
    runUntil([&] { return first.times > 0 || test::wasRefused(); });
    if (fromThenOn) test::disarmNew();
    runUntil([&] { return first.times > 0; });
    Asked next(*transport, server.address());
    runUntil([&] { return next.times > 0; });
    // The end of the thread waits for what it still keeps.
    transport->stop();
    test::disarmNew();
    EXPECT_EQ(first.times, 1);
    EXPECT_EQ(next.times, 1);
    EXPECT_TRUE(next.hasRates || (test::wasRefused() && !fromThenOn));
    return test::wasRefused();
  });
  EXPECT_GT(refusals, 40) << "the thread needs memory";
}

// Runs what was posted when the test says so.
class PostedLoop final : public test::ForwardingLoop {
 public:
  void post(Function function) override {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(function));
    isPosted_.notify_one();
  }
  void runOne() {
    std::unique_lock lock(mutex_);
    isPosted_.wait(lock, [this] { return !posted_.empty(); });
    const Function function = std::move(posted_.front());
    posted_.pop_front();
    lock.unlock();
    function();
  }
  void runUntil(const std::function<bool()>& done) override {
    while (!done()) runOne();
  }

 private:
  std::mutex mutex_;
  std::condition_variable isPosted_;
  std::deque<Function> posted_;
};

// The main thread's: in the first request, or when the module has been opened.
TEST(OpeningShortage, IsToldOnceAndPasses) {
  const test::LoopbackServer server(kAnswer);
  static NoDestructor<PostedLoop> loop;  // the module's to the end
  static NoDestructor<NoLog> log;
  const auto signals = [] {
    sigset_t blocked{};
    pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    std::string all;
    for (int signal = 1; signal < NSIG; ++signal) all += sigismember(&blocked, signal) ? '1' : '0';
    return all;
  };
  const std::string before = signals();
  for (const bool isInRequest : {true, false}) {
    const int refusals = eachNumber([&](std::size_t number, bool fromThenOn) {
      LazyTransport transport([] {
        return LazyTransport::Host{&*loop, &*log, &Files::process(), {}};
      });
      Asked first;
      bool threw = false;
      if (isInRequest) test::armNew(number, fromThenOn);
      try {
        first.ask(transport, server.address());
      } catch (const std::bad_alloc&) {
        threw = true;
      }
      if (isInRequest) test::disarmNew();
      EXPECT_EQ(signals(), before);
      Asked second(transport, server.address());
      if (!isInRequest) {
        test::armNew(number, fromThenOn);
        EXPECT_NO_THROW(loop->runOne());
        test::disarmNew();
      }
      loop->runUntil([&] { return second.times > 0 && (threw || first.times > 0); });
      EXPECT_EQ(first.times, threw ? 0 : 1);
      EXPECT_EQ(second.times, 1);
      Asked third(transport, server.address());
      loop->runUntil([&] { return third.times > 0; });
      EXPECT_TRUE(third.hasRates);
      return test::wasRefused();
    });
    EXPECT_GT(refusals, 5) << "both need memory";
  }
}

}  // namespace
}  // namespace fexora
