// Each allocation of the network's thread, and of the main thread where it opens the network,
// failing in turn: whoever waits is told once, and the next request works.
#include <atomic>
#include <condition_variable>
#include <csignal>
#include <deque>
#include <mutex>
#include <string_view>

#include <gtest/gtest.h>

#include "fexora/input/Response.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/network/LazyTransport.h"
#include "fexora/platform/network/NetworkManager.h"
#include "fexora/platform/network/curl/CurlTransport.h"

#include "tests/reliability/shortage/FailingNew.h"
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

struct Told {
  int times = 0;
  bool hasRates = false;
};

void request(Transport& transport, const std::string& address, Told& told) {
  NetworkManager::simpleRequest<Response>(transport, address,
                                          [&told](const std::shared_ptr<Response>& response,
                                                  const std::optional<ResponseError>& error) {
                                            ++told.times;
                                            told.hasRates = response != nullptr &&
                                                            response->rates().size() == 1;
                                            EXPECT_NE(told.hasRates, error.has_value());
                                          });
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
  std::size_t refusals = 0;
  for (const bool fromThenOn : {false, true}) {
    for (std::size_t number = 0;; ++number) {
      SCOPED_TRACE("allocation " + std::to_string(number) +
                   (fromThenOn ? " from then on" : " alone"));
      const auto transport =
          CurlTransport::make(RunLoop::process(), log, Files::process(), options);
      ASSERT_NE(transport, nullptr);
      Told told;
      test::armOthers(number, fromThenOn);
      request(*transport, server.address(), told);
      runUntil([&] { return told.times > 0 || test::othersWereRefused(); });
      if (fromThenOn) test::disarmOthers();
      runUntil([&] { return told.times > 0; });
      Told next;
      request(*transport, server.address(), next);
      runUntil([&] { return next.times > 0; });
      // The end of the thread waits for what it still keeps.
      transport->stop();
      const bool wasRefused = test::othersWereRefused();
      test::disarmOthers();
      EXPECT_EQ(told.times, 1);
      EXPECT_EQ(next.times, 1);
      EXPECT_TRUE(next.hasRates || (wasRefused && !fromThenOn));
      if (HasFailure()) return;
      if (!wasRefused) break;
      ++refusals;
    }
  }
  EXPECT_GT(refusals, 40U) << "the thread needs memory";
}

// Runs what was posted when the test says so.
class PostedLoop final : public RunLoop {
 public:
  double monotonicSeconds() override { return 0; }
  double wallSeconds() override { return 0; }
  std::shared_ptr<Timer> scheduleTimer(double, Function) override { return nullptr; }
  std::unique_ptr<DescriptorWatch> watchReadable(int, Function) override { return nullptr; }
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

bool sameSignals(const sigset_t& a, const sigset_t& b) {
  for (int signal = 1; signal < NSIG; ++signal) {
    if (sigismember(&a, signal) != sigismember(&b, signal)) return false;
  }
  return true;
}

// The main thread's: in the first request, or when the module has been opened.
TEST(OpeningShortage, IsToldOnceAndPasses) {
  const test::LoopbackServer server(kAnswer);
  static NoDestructor<PostedLoop> loop;  // the module's to the end
  static NoDestructor<NoLog> log;
  sigset_t before{};
  pthread_sigmask(SIG_SETMASK, nullptr, &before);
  std::size_t refusals = 0;
  for (const bool isInRequest : {true, false}) {
    for (const bool fromThenOn : {false, true}) {
      for (std::size_t number = 0, count = 0;; ++number) {
        SCOPED_TRACE("allocation " + std::to_string(number) + (fromThenOn ? " on" : "") +
                     (isInRequest ? " in a request" : " in the opening"));
        LazyTransport transport([] {
          return LazyTransport::Host{&*loop, &*log, &Files::process(), {}};
        });
        Told first;
        bool threw = false;
        if (isInRequest) test::armNew(number, fromThenOn);
        try {
          request(transport, server.address(), first);
        } catch (const std::bad_alloc&) {
          threw = true;
        }
        if (isInRequest) count = test::disarmNew();
        sigset_t after{};
        pthread_sigmask(SIG_SETMASK, nullptr, &after);
        ASSERT_TRUE(sameSignals(before, after));
        Told second;
        request(transport, server.address(), second);
        if (!isInRequest) {
          test::armNew(number, fromThenOn);
          ASSERT_NO_THROW(loop->runOne());
          count = test::disarmNew();
        }
        loop->runUntil([&] { return second.times > 0 && (threw || first.times > 0); });
        EXPECT_EQ(first.times, threw ? 0 : 1);
        EXPECT_EQ(second.times, 1);
        Told third;
        request(transport, server.address(), third);
        loop->runUntil([&] { return third.times > 0; });
        EXPECT_TRUE(third.hasRates);
        if (HasFailure()) return;
        if (count <= number) break;
        ++refusals;
      }
    }
  }
  EXPECT_GT(refusals, 10U) << "both need memory";
}

}  // namespace
}  // namespace fexora
