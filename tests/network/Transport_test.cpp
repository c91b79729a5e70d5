// What the transport owes the loop that it completes on, and its bounds in time. What a service can
// answer is asked of the program: tests/programs/test_network.py.
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "fexora/input/Response.h"
#include "fexora/platform/network/NetworkManager.h"
#include "fexora/platform/network/curl/CurlTransport.h"

#include "tests/support/LoopbackServer.h"

namespace fexora::test {
namespace {

using Kind = ResponseError::Kind;

constexpr std::string_view kGood =
    "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n{\"rates\": [{\"code\": \"EUR\", \"rate\": 1}]}";
constexpr std::string_view kUnfinished =
    "HTTP/1.1 200 OK\r\nContent-Length: 500\r\n\r\n{\"serviceMessage\": \"";

class NoLog final : public Log {
 public:
  void write(std::string_view /*line*/) override {}
};

struct Outcome {
  int completions = 0;
  std::shared_ptr<Response> record;
  std::optional<ResponseError> error;
  int ticks = 0;  // of a timer of one millisecond, while the request ran
};

// Where nobody looks at what came.
std::shared_ptr<MappableModel> unread(const MapSource& /*object*/) {
  return nullptr;
}

class TransportTest : public testing::Test {
 protected:
  // Made at first use, from `options` as it is then.
  CurlTransport& transport() {
    if (transport_ == nullptr) {
      transport_ = CurlTransport::make(loop, log_, Files::process(), options);
    }
    return *transport_;
  }
  void endTransport() { transport_.reset(); }

  // Runs the loop until the request has completed, and once more for what may follow.
  Outcome ask(const std::string& address);
  void expectError(const Outcome& outcome, Kind kind) {
    ASSERT_TRUE(outcome.error.has_value());
    EXPECT_EQ(text(outcome.error->kind), std::string(text(kind))) << outcome.error->message;
  }

  RunLoop& loop = RunLoop::process();
  NetOptions options;

 private:
  NoLog log_;
  std::unique_ptr<CurlTransport> transport_;
};

Outcome TransportTest::ask(const std::string& address) {
  Outcome outcome;
  std::shared_ptr<Timer> timer;
  const std::function<void()> tick = [&] {
    ++outcome.ticks;
    timer = loop.scheduleTimer(0.001, tick);
  };
  timer = loop.scheduleTimer(0.001, tick);
  NetworkManager::simpleRequest<Response>(
      transport(), address,
      [&outcome](std::shared_ptr<Response> record, std::optional<ResponseError> error) {
        ++outcome.completions;
        outcome.record = std::move(record);
        outcome.error = std::move(error);
      });
  EXPECT_EQ(outcome.completions, 0) << "called before the request returned";
  loop.runUntil([&] { return outcome.completions > 0; });
  timer->invalidate();
  // A second call would be in the queue before this.
  bool later = false;
  loop.post([&] { later = true; });
  loop.runUntil([&] { return later; });
  EXPECT_EQ(outcome.completions, 1);
  EXPECT_NE(outcome.record != nullptr, outcome.error.has_value());
  return outcome;
}

TEST_F(TransportTest, AddressMalformed) {
  for (const std::string& address :
       {std::string(), std::string("http://"), std::string("ftp://127.0.0.1/rates.json"),
        std::string("file:///etc/hostname"), std::string("gopher://127.0.0.1/"),
        std::string("http://127.0.0.1:99999/"), std::string("http://exa mple/"),
        std::string("http://127.0.0.1/\r\nX: y"), std::string("://"), std::string("http://[::1/"),
        std::string("http://127.0.0.1\0.example/", 26)}) {
    SCOPED_TRACE(address);
    const Outcome outcome = ask(address);
    expectError(outcome, Kind::noAddress);
    EXPECT_EQ(outcome.error->address, address);
  }
}

TEST_F(TransportTest, NameUnknownOrNeverAnswered) {
  const LoopbackServer server(kGood);
  options.connectSeconds = 0.3;
  expectError(ask("http://missing.test/rates.json"), Kind::noAddress);
  // Neither the loop nor the end of the transport waits for the look-up, which goes on for ever.
  const Outcome outcome = ask("http://silent.test/rates.json");
  expectError(outcome, Kind::timeOut);
  EXPECT_GE(outcome.ticks, 5);
  transport().get("http://silent.test/rates.json", &unread, [](auto, auto) {});
  EXPECT_NE(ask(server.address()).record, nullptr);
  endTransport();
}

// A service that says nothing, and two that never come to an end.
TEST_F(TransportTest, TimeOut) {
  options.requestSeconds = 0.3;
  const LoopbackListener silent;
  expectError(ask(silent.address()), Kind::timeOut);
  for (const std::string_view begin : {kUnfinished, std::string_view("HTTP/1.1 200 OK\r\n")}) {
    const LoopbackServer dripping([begin](int connection) {
      sendAll(connection, begin);
      while (sendAll(connection, "X")) waitForClient(connection, 10);
    });
    expectError(ask(dripping.address()), Kind::timeOut);
  }
}

TEST_F(TransportTest, Requests_RunSideBySide) {
  const LoopbackListener silent;
  const LoopbackServer server(kGood);
  int completions = 0;
  transport().get(silent.address(), &unread, [&](auto, auto) { ++completions; });
  EXPECT_NE(ask(server.address()).record, nullptr);
  endTransport();
  bool later = false;
  loop.post([&] { later = true; });
  loop.runUntil([&] { return later; });
  EXPECT_EQ(completions, 0);
}

TEST_F(TransportTest, Completion_MaySendTheNextOrEndTheTransport) {
  const LoopbackServer server(kGood);
  int done = 0;
  transport().get(server.address(), &unread, [&](auto, auto) {
    transport().get(server.address(), &unread, [&](auto, auto) {
      endTransport();
      ++done;
    });
  });
  loop.runUntil([&] { return done > 0; });
  EXPECT_EQ(done, 1);
}

TEST_F(TransportTest, Loop_TicksWhileALargeAnswerComes) {
  std::string answer = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n{\"rates\": [";
  for (int i = 0; i < 10'000; ++i) {
    // A rate may be a text, which is read as an amount is.
    const std::string rate = std::to_string(i) + ".5";
    answer += "{\"code\": \"C" + std::to_string(i) + "\", \"rate\": ";
    answer += (i % 2 == 0 ? rate : "\"" + rate + "\"") + "},";
  }
  answer.back() = ']';
  answer += "}";
  const LoopbackServer server([&answer](int connection) {
    for (std::size_t at = 0; at < answer.size(); at += 10'240) {
      sendAll(connection, std::string_view(answer).substr(at, 10'240));
      waitForClient(connection, 1);
    }
  });
  const Outcome outcome = ask(server.address());
  ASSERT_NE(outcome.record, nullptr);
  ASSERT_EQ(outcome.record->rates().size(), 10'000U);
  EXPECT_EQ(outcome.record->rates()[9'999]->rate(), NSNumber(9999.5));
  EXPECT_GE(outcome.ticks, 5);
}

}  // namespace
}  // namespace fexora::test
