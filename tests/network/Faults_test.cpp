// Each way in which a service can fail: one completion, the right kind of error, within the limits.
#include <array>
#include <limits>
#include <string>

#include "fexora/platform/mapping/MappableModel.h"
#include "fexora/platform/network/NetworkManager.h"

#include "tests/network/NetworkTest.h"

namespace fexora::test {
namespace {

using Kind = ResponseError::Kind;
using Connection = FaultServer::Connection;

const std::string kHead = "HTTP/1.1 200 OK\r\nConnection: close\r\n";
const std::string kBody =
    R"({"serviceMessage": "hello", "rates": [{"code": "EUR", "rate": 0.85}]})";

class Faults : public NetworkTest {
 protected:
  void expectError(const Outcome& outcome, Kind kind, int status = 0) {
    ASSERT_TRUE(outcome.error.has_value());
    EXPECT_EQ(text(outcome.error->kind), std::string(text(kind))) << outcome.error->message;
    EXPECT_EQ(outcome.error->status, status) << outcome.error->message;
  }
  void expectError(const std::string& bytes, Kind kind, int status = 0) {
    SCOPED_TRACE(bytes.substr(0, 200));
    expectError(askServer(bytes), kind, status);
  }
  Outcome askHandler(FaultServer::Handler handler) {
    server.on("/rates.json", std::move(handler));
    return ask(server.address("/rates.json"));
  }
};

// Where nobody looks at what came.
std::shared_ptr<MappableModel> unread(const MapSource& /*object*/) {
  return nullptr;
}

TEST_F(Faults, GoodAnswers) {
  const std::array<std::string, 4> good = {
      answer(kBody), answer(gzip(kBody), "Content-Encoding: gzip\r\n"), kHead + "\r\n" + kBody,
      kHead + "Transfer-Encoding: chunked\r\n\r\n5\r\n" + kBody.substr(0, 5) + "\r\n" + "40\r\n" +
          kBody.substr(5) + "\r\n0\r\n\r\n"};
  ASSERT_EQ(kBody.size(), 5U + 0x40);
  for (const auto& bytes : good) {
    const Outcome outcome = askServer(bytes);
    ASSERT_NE(outcome.record, nullptr) << outcome.error->message;
    EXPECT_EQ(outcome.record->serviceMessage, "hello");
  }
}

TEST_F(Faults, Request_SaysWhoAsksAndTakesGzip) {
  askServer(answer(kBody));
  ASSERT_EQ(server.requests().size(), 1U);
  const std::string request = server.requests().front();
  EXPECT_TRUE(request.starts_with("GET /rates.json HTTP/1.1\r\n")) << request;
  EXPECT_NE(request.find("\r\nUser-Agent: fexora/"), std::string::npos) << request;
  EXPECT_NE(request.find("\r\nAccept-Encoding: gzip\r\n"), std::string::npos) << request;
  EXPECT_EQ(request.find("If-"), std::string::npos) << request;
}

TEST_F(Faults, Address_Malformed) {
  for (const std::string address :
       {"", "http://", "ftp://127.0.0.1/rates.json", "file:///etc/hostname", "gopher://127.0.0.1/",
        "http://127.0.0.1:99999/", "http://exa mple/", "http://127.0.0.1/\r\nX: y", "://",
        "http://[::1/"}) {
    SCOPED_TRACE(address);
    expectError(ask(address), Kind::noAddress);
  }
  expectError(ask(std::string("http://127.0.0.1\0.example/", 26)), Kind::noAddress);
}

TEST_F(Faults, Name_UnknownOrNeverAnswered) {
  options.connectSeconds = 0.3;
  expectError(ask("http://missing.test/rates.json"), Kind::noAddress);
  // Neither the loop nor the end of the transport waits for the look-up, which goes on for ever.
  const Outcome outcome = ask("http://silent.test/rates.json");
  expectError(outcome, Kind::timeOut);
  EXPECT_GE(outcome.ticks, 5);
  transport().get("http://silent.test/rates.json", &unread, [](auto, auto) {});
  EXPECT_NE(askServer(answer(kBody)).record, nullptr);
  endTransport();
}

TEST_F(Faults, Connection_RefusedOrBrokenOff) {
  const RefusingPort refusing;
  expectError(ask("http://127.0.0.1:" + std::to_string(refusing.port()) + "/"), Kind::noConnection);
  expectError("", Kind::noConnection);
  expectError(askHandler([](Connection& connection) { connection.breakOff(); }),
              Kind::noConnection);
  expectError(askHandler([](Connection& connection) {
                connection.send(kHead + "Content-Length: 500\r\n\r\n" + kBody);
                connection.breakOff();
              }),
              Kind::noConnection);
  expectError("SSH-2.0-Server\r\n", Kind::noConnection);
  expectError("HTTP/1.1 200 OK\r\nConte", Kind::noConnection);
}

TEST_F(Faults, TimeOut) {
  options.requestSeconds = 0.3;
  expectError(askHandler([](Connection& connection) { connection.waitForClient(); }),
              Kind::timeOut);
  expectError(askHandler([](Connection& connection) {
                connection.send(kHead + "Content-Length: 500\r\n\r\n");
                while (connection.send(" ")) connection.waitForClient(10);
              }),
              Kind::timeOut);
  expectError(askHandler([](Connection& connection) {
                connection.send(kHead);
                while (connection.send("X")) connection.waitForClient(10);
              }),
              Kind::timeOut);
}

TEST_F(Faults, Length_Wrong) {
  expectError(kHead + "Content-Length: 500\r\n\r\n" + kBody, Kind::noConnection);
  expectError(kHead + "Content-Length: 20\r\n\r\n" + kBody, Kind::notJson);
  expectError(kHead + "Content-Length: x\r\n\r\n" + kBody, Kind::noConnection);
  expectError(kHead + "\r\n" + kBody.substr(0, kBody.size() / 2), Kind::notJson);
  expectError(kHead + "Transfer-Encoding: chunked\r\n\r\n40\r\n" + kBody, Kind::noConnection);
  expectError(kHead + "Transfer-Encoding: chunked\r\n\r\nxyz\r\n" + kBody, Kind::noConnection);
  expectError(answer(""), Kind::notJson);
}

TEST_F(Faults, Gzip_Damaged) {
  const std::string packed = gzip(kBody);
  const std::string coding = "Content-Encoding: gzip\r\n";
  expectError(answer(packed.substr(0, packed.size() / 2), coding), Kind::notJson);
  expectError(answer(packed.substr(0, 5), coding), Kind::notJson);
  expectError(answer(kBody, coding), Kind::notJson);
  expectError(answer(packed), Kind::notJson);
  std::string flipped = packed;
  flipped[packed.size() - 6] = static_cast<char>(flipped[packed.size() - 6] ^ 1);  // the check sum
  expectError(answer(flipped, coding), Kind::notJson);
  expectError(answer(kBody, "Content-Encoding: gzip, gzip, gzip, gzip, gzip, gzip, gzip\r\n"),
              Kind::notJson);
}

TEST_F(Faults, TooLarge) {
  const std::string bomb =
      answer(gzip(std::string(std::size_t{256} << 20, ' ')), "Content-Encoding: gzip\r\n");
  const PeakMemory memory;
  expectError(kHead + "Content-Length: 1073741824\r\n\r\n", Kind::tooLarge);
  expectError(bomb, Kind::tooLarge);
  const std::string spaces(65536, ' ');
  expectError(askHandler([spaces](Connection& connection) {
                connection.send(kHead + "\r\n");
                while (connection.send(spaces)) {
                }
              }),
              Kind::tooLarge);
  std::string packedHeaders;
  for (int i = 0; i < 1000; ++i) packedHeaders += "X-Header: " + std::string(60, 'x') + "\r\n";
  expectError(answer(kBody, packedHeaders), Kind::tooLarge);
  expectError(askHandler([spaces](Connection& connection) {
                connection.send("HTTP/1.1 200 OK\r\nX: ");
                while (connection.send(spaces)) {
                }
              }),
              Kind::tooLarge);
  expectError(askHandler([](Connection& connection) {
                while (connection.send("HTTP/1.1 100 Continue\r\n\r\n")) {
                }
              }),
              Kind::tooLarge);
  EXPECT_LT(memory.growth(), kMemoryBound);
}

TEST_F(Faults, TooLarge_JustBeyondTheLimitOnly) {
  options.answerBytes = 1000;
  std::string body = "{\"a\":\"\"}";
  body.insert(6, std::string(options.answerBytes - body.size(), 'x'));
  EXPECT_NE(askServer(answer(body)).record, nullptr);
  EXPECT_NE(askServer(answer(gzip(body), "Content-Encoding: gzip\r\n")).record, nullptr);
  body.insert(6, "x");
  expectError(answer(body), Kind::tooLarge);
  expectError(answer(gzip(body), "Content-Encoding: gzip\r\n"), Kind::tooLarge);
  expectError(kHead + "\r\n" + body, Kind::tooLarge);
}

TEST_F(Faults, Redirects) {
  const auto redirectTo = [&](const std::string& target) {
    return answer("<html>moved</html>", "Location: " + target + "\r\n", "302 Found");
  };
  const RefusingPort refusing;
  server.reply("/good.json", answer(kBody));
  EXPECT_NE(askServer(redirectTo("/good.json")).record, nullptr);
  expectError(redirectTo("/rates.json"), Kind::httpStatus, 302);
  EXPECT_EQ(server.requests().size(), 2U + 6U);
  expectError(redirectTo("file:///etc/hostname"), Kind::httpStatus, 302);
  expectError(redirectTo("ftp://127.0.0.1/rates.json"), Kind::httpStatus, 302);
  expectError(redirectTo("http://127.0.0.1:99999/"), Kind::httpStatus, 302);
  expectError(redirectTo("http://127.0.0.1:" + std::to_string(refusing.port()) + "/"),
              Kind::noConnection);
  expectError(answer(kBody, "", "302 Found"), Kind::httpStatus, 302);
}

TEST_F(Faults, Redirects_FiveAreFollowed) {
  for (int i = 0; i < 6; ++i) {
    server.reply("/" + std::to_string(i),
                 answer("", "Location: /" + std::to_string(i + 1) + "\r\n", "301 Moved"));
  }
  server.reply("/6", answer(kBody));
  EXPECT_NE(ask(server.address("/1")).record, nullptr);
  expectError(ask(server.address("/0")), Kind::httpStatus, 301);
}

TEST_F(Faults, Status_DecidesWhateverTheBody) {
  for (const int status : {201, 203, 206, 300, 400, 401, 403, 404, 407, 410, 429, 500, 503, 599}) {
    expectError(answer(kBody, "", std::to_string(status) + " Whatever"), Kind::httpStatus, status);
  }
  expectError("HTTP/1.1 204 No Content\r\n\r\n", Kind::httpStatus, 204);
  expectError(answer("", "", "404 Not Found"), Kind::httpStatus, 404);
  expectError("HTTP/1.1 500 Oops\r\nContent-Length: 1073741824\r\n\r\n" + kBody, Kind::httpStatus,
              500);
  expectError("HTTP/1.1 503 Oops\r\nContent-Length: 500\r\n\r\n", Kind::httpStatus, 503);
  expectError(askHandler([](Connection& connection) {
                connection.send("HTTP/1.1 404 Not Found\r\n\r\n");
                while (connection.send(kBody)) {
                }
              }),
              Kind::httpStatus, 404);
  // Nothing was asked about, so nothing can stand unchanged.
  expectError("HTTP/1.1 304 Not Modified\r\n\r\n", Kind::httpStatus, 304);
}

TEST_F(Faults, Body_NotJson) {
  for (const std::string& body :
       {std::string("<html><body>Please log in</body></html>"), std::string(100'000, '['),
        std::string("{\"a\": \"\xFF\"}"), std::string(R"({"a": "\ud800"})"),
        std::string(R"({"a": "\udc00x"})"), kBody + kBody, std::string("{\"a\":1,}")}) {
    expectError(answer(body), Kind::notJson);
  }
}

TEST_F(Faults, Body_ManyTinyValuesAreTooLarge) {
  for (const std::string part : {"[1],", "{\"\":\"\"},", "\"\","}) {
    std::string body = "[";
    while (body.size() < (std::size_t{15} << 20)) body += part;
    server.reply("/rates.json", answer(body + "1]"));
    const PeakMemory memory;
    expectError(ask(server.address("/rates.json")), Kind::tooLarge);
    EXPECT_LT(memory.growth(), kMemoryBound) << part;
  }
}

TEST_F(Faults, Root_MustBeAnObject) {
  const auto request = [this](const std::string& body) {
    const Outcome outcome = askServer(answer(body));
    return outcome.error ? std::string(text(outcome.error->kind)) : outcome.record->serviceMessage;
  };
  EXPECT_EQ(request("[]"), "not an object");
  EXPECT_EQ(request("null"), "not an object");
  EXPECT_EQ(request("\"text\""), "not an object");
  EXPECT_EQ(request("{}"), "");
  EXPECT_EQ(request(R"({"serviceMessage": 7})"), "");
  EXPECT_EQ(request(kBody), "hello");
  EXPECT_EQ(request("{"), "not JSON");
}

TEST_F(Faults, Requests_RunSideBySide) {
  server.on("/silent", [](Connection& connection) { connection.waitForClient(); });
  int silent = 0;
  transport().get(server.address("/silent"), &unread, [&](auto, auto) { ++silent; });
  EXPECT_NE(askServer(answer(kBody)).record, nullptr);
  EXPECT_EQ(silent, 0);
  endTransport();
  bool later = false;
  RunLoop::process().post([&] { later = true; });
  RunLoop::process().runUntil([&] { return later; });
  EXPECT_EQ(silent, 0);
}

TEST_F(Faults, Completion_MaySendTheNextOrEndTheTransport) {
  server.reply("/rates.json", answer(kBody));
  const std::string address = server.address("/rates.json");
  int done = 0;
  transport().get(address, &unread, [&](auto, auto) {
    transport().get(address, &unread, [&](auto, auto) {
      endTransport();
      ++done;
    });
  });
  RunLoop::process().runUntil([&] { return done > 0; });
  EXPECT_EQ(done, 1);
}

TEST_F(Faults, Loop_TicksWhileALargeAnswerComes) {
  std::string body = "{\"rates\": [";
  for (int i = 0; i < 10'000; ++i) {
    // A rate may be a text, which is read as an amount is.
    const std::string rate = std::to_string(i) + ".5";
    body += "{\"code\": \"C" + std::to_string(i) + "\", \"rate\": ";
    body += (i % 2 == 0 ? rate : "\"" + rate + "\"") + "},";
  }
  body.back() = ']';
  body += "}";
  const std::string packed = answer(gzip(body), "Content-Encoding: gzip\r\n");
  const Outcome outcome = askHandler([packed](Connection& connection) {
    for (std::size_t at = 0; at < packed.size(); at += 1024) {
      connection.send(std::string_view(packed).substr(at, 1024));
      connection.waitForClient(1);
    }
  });
  ASSERT_NE(outcome.record, nullptr);
  ASSERT_EQ(outcome.record->rates.size(), 10'000U);
  EXPECT_EQ(outcome.record->rates[9'999]->rate(), NSNumber(9999.5));
  EXPECT_GE(outcome.ticks, 5);
}

TEST_F(Faults, Proxy_FromTheEnvironment) {
  setenv("http_proxy", server.address("").c_str(), 1);
  server.reply("http://rates.invalid/rates.json", answer(kBody));
  EXPECT_NE(ask("http://rates.invalid/rates.json").record, nullptr);
  ASSERT_EQ(server.requests().size(), 1U);
  EXPECT_TRUE(server.requests().front().starts_with("GET http://rates.invalid/rates.json HTTP/"));
  // What libcurl says of a proxy quotes it, whole or cut off.
  for (const std::size_t length : {6U, 300U}) {
    setenv("http_proxy", ("http://user:" + std::string(length, 's') + "@[no-proxy").c_str(), 1);
    const Outcome outcome = ask("http://rates.invalid/rates.json");
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(outcome.error->message.find("sss"), std::string::npos) << outcome.error->message;
    EXPECT_EQ(outcome.error->message.find("user"), std::string::npos) << outcome.error->message;
  }
  unsetenv("http_proxy");
}

}  // namespace
}  // namespace fexora::test
