// What the transport owes the loop that it completes on, and its bounds in time. What a service can
// answer is asked of the program: tests/programs/test_network.py.
#include <array>
#include <atomic>
#include <initializer_list>
#include <memory>
#include <optional>
#include <semaphore>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "fexora/platform/network/NetworkManager.h"
#include "fexora/platform/network/ShownAddress.h"
#include "fexora/platform/network/curl/CurlTransport.h"
#include "fexora/records/Response.h"

#include "tests/network/NameServer.h"
#include "tests/support/LoopbackServer.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora::test {
namespace {

using Kind = ResponseError::Kind;

constexpr std::string_view kGood =
    "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n{\"rates\": [{\"code\": \"EUR\", \"rate\": 1}]}";

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
      transport_ = CurlTransport::make(loop, log, Files::process(), options);
    }
    return *transport_;
  }
  void endTransport() { transport_.reset(); }

  // Runs the loop until the request has completed, and for a second completion that may follow;
  // with a transfer, cancels it over and over as soon as `isTime` says so.
  Outcome ask(
      const std::string& address, const std::shared_ptr<Transfer>& transfer = nullptr,
      const std::function<bool()>& isTime = [] { return false; });
  Outcome expectError(const std::string& address, Kind kind) {
    Outcome outcome = ask(address);
    EXPECT_EQ(outcome.error ? text(outcome.error->kind) : "none", std::string(text(kind)));
    EXPECT_EQ(outcome.error ? outcome.error->address : "", address);
    return outcome;
  }
  // Until all that is in the loop's queue by now has been called.
  void runQueued() {
    bool isLast = false;
    loop.post([&] { isLast = true; });
    loop.runUntil([&] { return isLast; });
  }

  RunLoop& loop = RunLoop::process();
  NetOptions options;
  NoLog log;

 private:
  std::unique_ptr<CurlTransport> transport_;
};

Outcome TransportTest::ask(const std::string& address, const std::shared_ptr<Transfer>& transfer,
                           const std::function<bool()>& isTime) {
  Outcome outcome;
  std::shared_ptr<Timer> timer;
  const std::function<void()> tick = [&] {
    ++outcome.ticks;
    if (isTime()) transfer->counts()->cancel();
    timer = loop.scheduleTimer(0.001, tick);
  };
  timer = loop.scheduleTimer(0.001, tick);
  NetworkManager::simpleRequest<Response>(
      transport(), address,
      [&outcome](std::shared_ptr<Response> record, std::optional<ResponseError> error) {
        ++outcome.completions;
        outcome.record = std::move(record);
        outcome.error = std::move(error);
      },
      transfer);
  if (isTime()) transfer->cancel();
  EXPECT_EQ(outcome.completions, 0) << "called before the request returned";
  loop.runUntil([&] { return outcome.completions > 0; });
  timer->invalidate();
  runQueued();
  EXPECT_EQ(outcome.completions, 1);
  EXPECT_NE(outcome.record != nullptr, outcome.error.has_value());
  return outcome;
}

TEST(ShownAddress, WithoutUserSecretAndQuery_HasItsHost) {
  for (const auto& [address, shown] : std::initializer_list<std::pair<const char*, const char*>>{
           {"https://host:81/npm/@owner/x", "https://host:81/npm/@owner/x"},
           {"https://u:p@host/@owner", "https://***@owner"},
           {"https://user:1/2@host/x", "https://***@host/x"},
           {"https://user:a/@host/x", "https://***@host/x"},
           {"https://a.b/@c https://u:p@host/@d", "https://***@host/@d"},
           {"https://host/@a?key https://host/x?", "https://host/@a?*** https://host/x?"}}) {
    EXPECT_EQ(shownAddress(address), shown);
  }
}

TEST_F(TransportTest, AddressMalformed) {
  for (const std::string& address : std::vector<std::string>{
           "", "http://", "ftp://127.0.0.1/rates.json", "file:///etc/hostname", "://",
           "http://[::1/", "http://127.0.0.1:99999/", "http://exa mple/",
           "http://127.0.0.1/\r\nX: y", std::string("http://127.0.0.1\0.example/", 26)}) {
    expectError(address, Kind::noAddress);
  }
}

TEST_F(TransportTest, NameUnknownOrNeverAnswered) {
  const LoopbackServer server(kGood);
  options.connectSeconds = 0.3;
  expectError("http://missing.test/rates.json", Kind::noAddress);
  // Neither the loop nor the end of the transport waits for the look-up, which goes on for ever.
  EXPECT_GE(expectError("http://silent.test/rates.json", Kind::timeOut).ticks, 5);
  transport().get("http://silent.test/rates.json", &unread, [](auto, auto) {});
  EXPECT_NE(ask(server.address()).record, nullptr);
  endTransport();
}

// A service that says nothing, and two that never come to an end.
TEST_F(TransportTest, TimeOut) {
  options.requestSeconds = 0.3;
  const LoopbackListener silent;
  expectError(silent.address(), Kind::timeOut);
  for (const std::string_view begin :
       {"HTTP/1.1 200 OK\r\nContent-Length: 500\r\n\r\n{\"serviceMessage\": \"",
        "HTTP/1.1 200 OK\r\n"}) {
    const LoopbackServer dripping([begin](int connection) {
      sendAll(connection, begin);
      while (sendAll(connection, "X")) waitForClient(connection, 10);
    });
    expectError(dripping.address(), Kind::timeOut);
  }
}

TEST_F(TransportTest, Requests_RunSideBySide) {
  const LoopbackListener silent;
  const LoopbackServer server(kGood);
  int completions = 0;
  transport().get(silent.address(), &unread, [&](auto, auto) { ++completions; });
  EXPECT_NE(ask(server.address()).record, nullptr);
  endTransport();
  runQueued();
  EXPECT_EQ(completions, 0);
}

// At each moment of a request; the connection is let go.
TEST_F(TransportTest, Cancelled_EndsAndIsToldOnce) {
  options.connectSeconds = options.requestSeconds = 3600;  // nothing else ends it
  const LoopbackListener silent;
  std::atomic<bool> hasLeft = false;
  const LoopbackServer halfway([&](int connection) {
    sendAll(connection, "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"rates\": [");
    waitForClient(connection, -1);
    hasLeft = true;
  });
  std::array<int, 2> name{};  // stays open: the look-up goes on for ever
  ASSERT_EQ(pipe(name.data()), 0);
  silentNameAsked = name[1];
  const auto isReadable = [](int descriptor) { return waitForClient(descriptor, 0); };
  std::shared_ptr<Transfer> transfer;
  struct Row {
    std::string address;
    std::function<bool()> isTime;
  };
  for (const Row& row :
       {Row{silent.address(), [] { return true; }},
        Row{"http://silent.test/", [&] { return isReadable(name[0]); }},
        Row{silent.address(), [&] { return isReadable(silent.descriptor()); }},
        Row{halfway.address(), [&] { return transfer->progress().received > 0; }}}) {
    transfer = std::make_shared<Transfer>();
    const Outcome outcome = ask(row.address, transfer, row.isTime);
    ASSERT_TRUE(outcome.error.has_value());
    EXPECT_EQ(outcome.error->kind, Kind::cancelled);
    EXPECT_EQ(outcome.error->address, row.address);
  }
  while (!hasLeft) std::this_thread::yield();
  // Before the network is open, and after the end.
  std::optional<Kind> kind;
  transfer = std::make_shared<Transfer>();
  NetworkManager::textRequest(
      Transport::process(), silent.address(),
      [&](const auto& /*text*/, const auto& error) { kind = error->kind; }, transfer);
  transfer->cancel();
  loop.runUntil([&] { return kind.has_value(); });
  EXPECT_EQ(*kind, Kind::cancelled);
  const LoopbackServer server(kGood);
  transfer = std::make_shared<Transfer>();
  EXPECT_NE(ask(server.address(), transfer).record, nullptr);
  transfer->cancel();
  runQueued();
}

TEST_F(TransportTest, Progress_IsToldOnTheLoopAndNotTooOften) {
  for (const bool saysTotal : {true, false}) {
    std::binary_semaphore goOn(0);
    const LoopbackServer server([&](int connection) {
      sendAll(connection, "HTTP/1.1 200 OK\r\n");
      sendAll(connection, saysTotal ? "Content-Length: 8\r\n\r\nhalf" : "\r\nhalf");
      goOn.acquire();
      sendAll(connection, "more");
    });
    VirtualRunLoop still;
    const auto held = CurlTransport::make(still, log, Files::process(), options);
    std::vector<Transfer::Progress> told;
    const auto transfer = std::make_shared<Transfer>(
        [&](const Transfer::Progress& progress) { told.push_back(progress); });
    std::optional<std::string> answer;
    NetworkManager::textRequest(
        *held, server.address(), [&](const auto& text, const auto&) { answer = text; }, transfer);
    while (transfer->progress().received == 0) std::this_thread::yield();
    still.advance(Transfer::kTellSpacing * 0.9);
    EXPECT_TRUE(told.empty());
    still.advance(Transfer::kTellSpacing * 10);
    const std::vector expected = {
        Transfer::Progress{4, saysTotal ? std::optional<std::uint64_t>(8) : std::nullopt}};
    EXPECT_EQ(told, expected);
    goOn.release();
    while (!answer) still.drain();
    EXPECT_EQ(*answer, "halfmore");
    EXPECT_EQ(still.timers(), 0U);
    EXPECT_EQ(told, expected);
  }
}

TEST_F(TransportTest, Told_MayEndTheTransport) {
  const LoopbackServer dripping([](int connection) {
    sendAll(connection, "HTTP/1.1 200 OK\r\n\r\n");
    while (sendAll(connection, "X")) waitForClient(connection, 1);
  });
  bool isDone = false;
  const auto transfer = std::make_shared<Transfer>([&](const Transfer::Progress& progress) {
    EXPECT_FALSE(progress.total.has_value());
    endTransport();
    isDone = true;
  });
  NetworkManager::textRequest(
      transport(), dripping.address(), [](auto, auto) { FAIL(); }, transfer);
  loop.runUntil([&] { return isDone; });
  transfer->cancel();
  runQueued();
}

TEST_F(TransportTest, Completion_MaySendTheNextOrEndTheTransport) {
  const LoopbackServer server(kGood);
  bool isDone = false;
  transport().get(server.address(), &unread, [&](auto, auto) {
    transport().get(server.address(), &unread, [&](auto, auto) {
      endTransport();
      isDone = true;
    });
  });
  loop.runUntil([&] { return isDone; });
}

TEST_F(TransportTest, Loop_TicksWhileALargeAnswerComes) {
  std::string answer = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n{\"rates\": [";
  for (int i = 0; i < 10'000; ++i) {
    // A rate that is a text is read as an amount is.
    answer += "{\"code\": \"EUR\", \"rate\": \"" + std::to_string(i) + ".5\"},";
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
