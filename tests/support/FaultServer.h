// An HTTP server on loopback that can do everything wrong.
//
// Each path has a handler, which is given the connection once the head of the request has come and
// says byte for byte what goes out; when it returns, the connection is closed. Connections are
// served side by side, each by a thread of its own. All of them end when the server goes.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace fexora::test {

class FaultServer {
 public:
  class Connection {
   public:
    const std::string& request() const { return request_; }
    // The header's value, or nothing written in the request under that name (lower case).
    std::string header(const std::string& name) const;

    // False once the client or the server is gone.
    bool send(std::string_view bytes);
    // Ends when the client is gone, or the server, or after that time.
    void waitForClient(int milliseconds = -1);
    // Closing breaks the connection off instead of ending it in order.
    void breakOff();

   private:
    friend class FaultServer;
    Connection(int socket, int stop) : socket_(socket), stop_(stop) {}
    bool readHead();
    bool wait(short events, int milliseconds);

    int socket_;
    int stop_;
    std::string request_;
  };
  using Handler = std::function<void(Connection&)>;

  FaultServer();
  FaultServer(const FaultServer&) = delete;
  FaultServer& operator=(const FaultServer&) = delete;
  ~FaultServer();

  void on(const std::string& path, Handler handler);
  // Answers the path with these bytes.
  void reply(const std::string& path, std::string bytes);

  std::string address(const std::string& path) const;
  std::uint16_t port() const { return port_; }
  // The heads of the requests so far.
  std::vector<std::string> requests() const;

 private:
  void acceptAll();
  void serve(int socket);
  Handler handlerFor(const std::string& request);

  std::uint16_t port_ = 0;  // before what sets it
  int listener_;
  int stop_;
  mutable std::mutex mutex_;
  std::map<std::string, Handler> handlers_;
  std::vector<std::string> requests_;
  std::vector<std::thread> connections_;
  std::thread accepting_;
};

// A whole answer; `headers` are lines that end in CR LF. The length and the closing are added.
std::string answer(std::string_view body, std::string_view headers = {},
                   std::string_view status = "200 OK");

std::string gzip(std::string_view bytes);

// A loopback port on which every connection is refused for as long as this lives.
class RefusingPort {
 public:
  RefusingPort();
  RefusingPort(const RefusingPort&) = delete;
  RefusingPort& operator=(const RefusingPort&) = delete;
  ~RefusingPort();
  std::uint16_t port() const { return port_; }

 private:
  std::uint16_t port_ = 0;  // before what sets it
  int socket_;
};

}  // namespace fexora::test
