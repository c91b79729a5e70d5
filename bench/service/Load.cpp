// Asks a server on loopback again and again, each time over a new connection, as the clients of the
// rates service do: bench_service_load PORT SECONDS REQUEST prints answers a second.
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int kClients = 8;

// Whether a whole answer has come.
bool ask(const sockaddr_in& server, const std::string& request) {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const auto* address = reinterpret_cast<const sockaddr*>(&server);
  std::size_t got = 0;
  ssize_t count = 0;
  if (::connect(socket, address, sizeof server) == 0 &&
      ::send(socket, request.data(), request.size(), MSG_NOSIGNAL) > 0) {
    std::array<char, 16384> buffer{};
    while ((count = ::recv(socket, buffer.data(), buffer.size(), 0)) > 0) {
      got += static_cast<std::size_t>(count);
    }
  }
  ::close(socket);
  return count == 0 && got > 0;
}

}  // namespace

int main(int count, char** words) {
  if (count != 4) return 2;
  sockaddr_in server{};
  server.sin_family = AF_INET;
  server.sin_port = htons(static_cast<std::uint16_t>(std::atoi(words[1])));
  server.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const double seconds = std::atof(words[2]);
  const std::string request = words[3];
  std::atomic<long> answers{0};
  std::atomic<bool> ended{false};
  std::vector<std::thread> clients;
  clients.reserve(kClients);
  for (int i = 0; i < kClients; ++i) {
    clients.emplace_back([&] {
      while (!ended) answers += ask(server, request) ? 1 : 0;
    });
  }
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
  ended = true;
  for (auto& client : clients) client.join();
  std::printf("%.0f\n", static_cast<double>(answers) / seconds);
}
