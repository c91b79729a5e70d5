#include "bench/host/RatesServer.h"

#include <cstdlib>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace fexora::bench {

RatesServer::RatesServer(const std::string& body)
    : answer_(
          "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nConnection: close\r\n"
          "Content-Length: " +
          std::to_string(body.size()) + "\r\n\r\n" + body),
      listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in name{};
  name.sin_family = AF_INET;
  name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof name;
  auto* const address = reinterpret_cast<sockaddr*>(&name);
  if (bind(listener_, address, size) != 0 || listen(listener_, 8) != 0 ||
      getsockname(listener_, address, &size) != 0) {
    std::abort();
  }
  address_ = "http://127.0.0.1:" + std::to_string(ntohs(name.sin_port)) + "/rates.json";
  thread_ = std::thread([this] { serve(); });
}

RatesServer::~RatesServer() {
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  close(listener_);
}

void RatesServer::serve() {
  for (int client = -1; (client = accept(listener_, nullptr, nullptr)) >= 0; close(client)) {
    char request[4096];
    if (read(client, request, sizeof request) <= 0) continue;
    for (std::size_t sent = 0; sent < answer_.size();) {
      const ssize_t part = send(client, answer_.data() + sent, answer_.size() - sent, MSG_NOSIGNAL);
      if (part <= 0) break;
      sent += static_cast<std::size_t>(part);
    }
  }
}

}  // namespace fexora::bench
