#include "tests/support/LoopbackServer.h"

#include <cstdlib>
#include <utility>

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace fexora::test {

LoopbackListener::LoopbackListener() : descriptor_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (bind(descriptor_, generic, size) != 0 || listen(descriptor_, 8) != 0 ||
      getsockname(descriptor_, generic, &size) != 0) {
    std::abort();
  }
  port_ = ntohs(address.sin_port);
}

LoopbackListener::~LoopbackListener() {
  close(descriptor_);
}

std::string LoopbackListener::address(const std::string& scheme) const {
  return scheme + "://127.0.0.1:" + std::to_string(port_) + "/rates.json";
}

LoopbackServer::LoopbackServer(std::function<void(int)> answer)
    : answer_(std::move(answer)), thread_([this] { serve(); }) {}

LoopbackServer::LoopbackServer(std::string_view bytes)
    : LoopbackServer([bytes](int connection) { sendAll(connection, bytes); }) {}

LoopbackServer::~LoopbackServer() {
  shutdown(descriptor(), SHUT_RDWR);
  thread_.join();
}

void LoopbackServer::serve() const {
  for (int client = accept(descriptor(), nullptr, nullptr); client >= 0;
       client = accept(descriptor(), nullptr, nullptr)) {
    char head[4096];
    if (recv(client, head, sizeof head, 0) > 0) answer_(client);
    shutdown(client, SHUT_WR);
    while (recv(client, head, sizeof head, 0) > 0) {
    }
    close(client);
  }
}

bool sendAll(int connection, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

bool waitForClient(int connection, int milliseconds) {
  pollfd polled{connection, POLLIN | POLLRDHUP, 0};
  return poll(&polled, 1, milliseconds) > 0;
}

}  // namespace fexora::test
