#include "tests/support/FaultServer.h"

#include <array>
#include <utility>

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>
#include <zlib.h>

namespace fexora::test {
namespace {

int loopbackSocket(std::uint16_t& port) {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  EXPECT_EQ(::bind(socket, generic, size), 0);
  EXPECT_EQ(::getsockname(socket, generic, &size), 0);
  port = ntohs(address.sin_port);
  return socket;
}

}  // namespace

std::string FaultServer::Connection::header(const std::string& name) const {
  std::string lower = request_;
  for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  const auto at = lower.find("\r\n" + name + ": ");
  if (at == std::string::npos) return {};
  const auto begin = at + 2 + name.size() + 2;
  return request_.substr(begin, request_.find("\r\n", begin) - begin);
}

// True when the socket is ready for `events`, its other end is gone, or time is up; false when the
// server ends.
bool FaultServer::Connection::wait(short events, int milliseconds) {
  std::array<pollfd, 2> polled{{{socket_, events, 0}, {stop_, POLLIN, 0}}};
  if (::poll(polled.data(), polled.size(), milliseconds) < 0) return false;
  return (polled[1].revents & POLLIN) == 0;
}

bool FaultServer::Connection::readHead() {
  while (request_.find("\r\n\r\n") == std::string::npos) {
    if (!wait(POLLIN, -1)) return false;
    std::array<char, 4096> buffer{};
    const ssize_t count = ::recv(socket_, buffer.data(), buffer.size(), 0);
    if (count <= 0) return false;
    request_.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return true;
}

bool FaultServer::Connection::send(std::string_view bytes) {
  while (!bytes.empty()) {
    if (!wait(POLLOUT, -1)) return false;
    const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

void FaultServer::Connection::waitForClient(int milliseconds) {
  wait(POLLIN | POLLRDHUP, milliseconds);
}

void FaultServer::Connection::breakOff() {
  const linger abrupt{1, 0};
  ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &abrupt, sizeof abrupt);
}

FaultServer::FaultServer()
    : listener_(loopbackSocket(port_)), stop_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  EXPECT_EQ(::listen(listener_, 64), 0);
  accepting_ = std::thread([this] { acceptAll(); });
}

FaultServer::~FaultServer() {
  const std::uint64_t one = 1;
  EXPECT_EQ(::write(stop_, &one, sizeof one), static_cast<ssize_t>(sizeof one));
  accepting_.join();
  for (auto& connection : connections_) connection.join();
  ::close(listener_);
  ::close(stop_);
}

void FaultServer::on(const std::string& path, Handler handler) {
  const std::lock_guard lock(mutex_);
  handlers_[path] = std::move(handler);
}

void FaultServer::reply(const std::string& path, std::string bytes) {
  on(path, [bytes = std::move(bytes)](Connection& connection) { connection.send(bytes); });
}

std::string FaultServer::address(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + path;
}

std::vector<std::string> FaultServer::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void FaultServer::acceptAll() {
  for (;;) {
    std::array<pollfd, 2> polled{{{listener_, POLLIN, 0}, {stop_, POLLIN, 0}}};
    if (::poll(polled.data(), polled.size(), -1) < 0 || (polled[1].revents & POLLIN) != 0) return;
    const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket >= 0) connections_.emplace_back([this, socket] { serve(socket); });
  }
}

void FaultServer::serve(int socket) {
  Connection connection(socket, stop_);
  if (connection.readHead()) {
    if (const auto handler = handlerFor(connection.request())) handler(connection);
  }
  ::close(socket);
}

FaultServer::Handler FaultServer::handlerFor(const std::string& request) {
  const auto begin = request.find(' ') + 1;
  const std::string path = request.substr(begin, request.find(' ', begin) - begin);
  const std::lock_guard lock(mutex_);
  requests_.push_back(request);
  const auto at = handlers_.find(path);
  return at != handlers_.end() ? at->second : Handler();
}

std::string answer(std::string_view body, std::string_view headers, std::string_view status) {
  std::string bytes("HTTP/1.1 ");
  bytes.append(status).append("\r\nContent-Type: application/json\r\nConnection: close\r\n");
  bytes.append("Content-Length: ").append(std::to_string(body.size())).append("\r\n");
  return bytes.append(headers).append("\r\n").append(body);
}

std::string gzip(std::string_view bytes) {
  z_stream stream{};
  constexpr int kGzipWindow = 15 + 16;
  EXPECT_EQ(deflateInit2(&stream, 1, Z_DEFLATED, kGzipWindow, 8, Z_DEFAULT_STRATEGY), Z_OK);
  std::string out(deflateBound(&stream, bytes.size()), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = reinterpret_cast<Bytef*>(out.data());
  stream.avail_out = static_cast<uInt>(out.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  out.resize(stream.total_out);
  deflateEnd(&stream);
  return out;
}

RefusingPort::RefusingPort() : socket_(loopbackSocket(port_)) {}
RefusingPort::~RefusingPort() {
  ::close(socket_);
}

}  // namespace fexora::test
