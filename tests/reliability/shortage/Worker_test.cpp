// Each allocation of the network's thread failing in turn: whoever waits is told once, and the next
// request works.
#include <atomic>
#include <cstdint>
#include <string_view>
#include <thread>

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "fexora/input/Response.h"
#include "fexora/platform/modules/net/CurlTransport.h"
#include "fexora/platform/network/NetworkManager.h"

#include "tests/reliability/shortage/FailingNew.h"
#include "tests/support/ScratchFolder.h"

namespace fexora {
namespace {

constexpr std::string_view kAnswer =
    "HTTP/1.1 200 OK\r\nETag: \"one\"\r\nContent-Length: 35\r\nConnection: close\r\n\r\n"
    "{\"rates\":[{\"code\":\"EUR\",\"rate\":1}]}";

// Gives everybody the same answer, without an allocation: its thread is one of those that fail.
class FrugalServer {
 public:
  FrugalServer() : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(bind(listener_, generic, size), 0);
    EXPECT_EQ(listen(listener_, 8), 0);
    EXPECT_EQ(getsockname(listener_, generic, &size), 0);
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { serve(); });
  }
  FrugalServer(const FrugalServer&) = delete;
  FrugalServer& operator=(const FrugalServer&) = delete;
  ~FrugalServer() {
    shutdown(listener_, SHUT_RDWR);
    thread_.join();
    close(listener_);
  }
  std::string address() const { return "http://127.0.0.1:" + std::to_string(port_) + "/"; }

 private:
  void serve() const {
    for (int client = accept(listener_, nullptr, nullptr); client >= 0;
         client = accept(listener_, nullptr, nullptr)) {
      char head[4096];
      if (recv(client, head, sizeof head, 0) > 0) {
        send(client, kAnswer.data(), kAnswer.size(), MSG_NOSIGNAL);
      }
      shutdown(client, SHUT_WR);
      while (recv(client, head, sizeof head, 0) > 0) {
      }
      close(client);
    }
  }

  int listener_;
  std::uint16_t port_ = 0;
  std::thread thread_;
};

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
  const FrugalServer server;
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

}  // namespace
}  // namespace fexora
