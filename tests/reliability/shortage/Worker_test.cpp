// Each allocation of the network's thread failing in turn: the request may come to nothing, but
// nothing ends, and the next one works.
#include <string_view>

#include <gtest/gtest.h>

#include "fexora/platform/network/NetworkManager.h"
#include "fexora/platform/network/curl/CurlTransport.h"
#include "fexora/records/Response.h"

#include "tests/reliability/shortage/FailingNew.h"
#include "tests/support/LoopbackServer.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora {
namespace {

constexpr std::string_view kAnswer =
    "HTTP/1.1 200 OK\r\nETag: \"one\"\r\nContent-Length: 35\r\nConnection: close\r\n\r\n"
    "{\"rates\":[{\"code\":\"EUR\",\"rate\":1}]}";

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

// What became of a request: how often it was told, and whether rates came.
struct Asked {
  Asked(Transport& transport, const std::string& address) {
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

TEST(WorkerShortage, EndsNothingAndTheNextRequestWorks) {
  const test::LoopbackServer server(kAnswer);
  const test::ScratchFolder scratch;
  test::NoLog log;
  NetOptions options;
  options.cacheFolder = scratch / "cache";
  options.container = "/container";
  std::size_t refusals = 0;
  for (const bool fromThenOn : {false, true}) {
    for (std::size_t number = 0, wasRefused = 1; wasRefused != 0; ++number) {
      const auto transport =
          CurlTransport::make(RunLoop::process(), log, Files::process(), options);
      test::armNew(number, fromThenOn, true);
      const Asked first(*transport, server.address());
      runUntil([&] { return first.times > 0 || test::wasRefused(); });
      wasRefused = test::wasRefused() ? 1 : 0;
      refusals += wasRefused;
      test::disarmNew();
      const Asked next(*transport, server.address());
      runUntil([&] { return next.times > 0; });
      ASSERT_LE(first.times, 1) << number;
      ASSERT_EQ(next.times, 1) << number;
      ASSERT_TRUE(next.hasRates) << number;
      // The end of the thread waits for what it still keeps.
      transport->stop();
    }
  }
  EXPECT_GT(refusals, 40U) << "the thread needs memory";
}

}  // namespace
}  // namespace fexora
