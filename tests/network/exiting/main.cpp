// A host that ends in the middle of a request: `network_exiting WHEN`.
//   at-once     before the module can be open
//   resolving   while the name look-up, which never ends, goes on
//   connected   when a server that stays silent has the request
//   secured     in the middle of a TLS handshake
//   receiving   when half of the answer has come
//   completed   after the completion, whose error is printed
//   forked      as "connected", but a forked child ends first
#include <array>
#include <cstdlib>
#include <iostream>
#include <string>

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "fexora/platform/Platform.h"

#include "tests/network/NameServer.h"
#include "tests/support/LoopbackServer.h"

namespace {

using fexora::RunLoop;

void ask(const std::string& address) {
  fexora::Platform::process().transport->get(
      address,
      [](const fexora::MapSource& /*object*/) { return std::make_shared<fexora::MappableModel>(); },
      [](const std::shared_ptr<fexora::MappableModel>& /*record*/,
         const std::optional<fexora::ResponseError>& error) {
        std::cout << (error ? text(error->kind) : "answer") << std::endl;
        std::exit(0);
      });
}

// Runs the loop until the descriptor can be read.
void waitFor(int descriptor) {
  bool readable = false;
  const auto watch = RunLoop::process().watchReadable(descriptor, [&] { readable = true; });
  RunLoop::process().runUntil([&] { return readable; });
}

// Has the request, or its beginning, on a connection of its own.
int takeRequest(const std::string& scheme) {
  static const fexora::test::LoopbackListener listener;
  ask(listener.address(scheme));
  waitFor(listener.descriptor());
  const int connection = accept(listener.descriptor(), nullptr, nullptr);
  waitFor(connection);
  return connection;
}

void end(const std::string& when) {
  if (when == "at-once") {
    ask("http://silent.test/");
  } else if (when == "resolving") {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) std::exit(3);
    fexora::test::silentNameAsked = ends[1];
    ask("http://silent.test/");
    waitFor(ends[0]);
  } else if (when == "connected") {
    takeRequest("http");
  } else if (when == "secured") {
    takeRequest("https");
  } else if (when == "receiving") {
    const std::string half = "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"rates\": [";
    if (send(takeRequest("http"), half.data(), half.size(), 0) < 0) std::exit(3);
  } else if (when == "completed") {
    ask("ftp://127.0.0.1/");
    RunLoop::process().runUntil([] { return false; });
  } else if (when == "forked") {
    takeRequest("http");
    const pid_t child = fork();
    if (child == 0) std::exit(0);
    int status = 0;
    if (waitpid(child, &status, 0) != child || status != 0) std::exit(3);
  } else {
    std::exit(2);
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) return 2;
  end(arguments[1]);
  return 0;
}
