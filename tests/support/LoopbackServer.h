// A service on loopback, one connection at a time, on a thread of its own.
//
// Its thread allocates nothing itself, for tests in which it would be rejected. Ends the program
// where the machine gives no socket. Goes after its clients: it waits for the end of the connection
// that it serves.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <thread>

namespace fexora::test {

// A port on which connections and requests are taken up by the system, and never answered.
class LoopbackListener {
 public:
  LoopbackListener();
  LoopbackListener(const LoopbackListener&) = delete;
  LoopbackListener& operator=(const LoopbackListener&) = delete;
  ~LoopbackListener();

  // Readable once somebody has connected.
  int descriptor() const { return descriptor_; }
  std::string address(const std::string& scheme = "http") const;

 private:
  int descriptor_;
  int port_ = 0;
};

class LoopbackServer : public LoopbackListener {
 public:
  // `answer` is given each connection once a request has come, and what it has not sent when it
  // returns nobody will.
  explicit LoopbackServer(std::function<void(int connection)> answer);
  explicit LoopbackServer(std::string_view bytes);  // which outlive this
  ~LoopbackServer();

 private:
  void serve() const;

  std::function<void(int)> answer_;
  std::thread thread_;
};

// False once the client is gone.
bool sendAll(int connection, std::string_view bytes);
// Ends after that time (-1: never), or when the client is gone or has sent something: true.
bool waitForClient(int connection, int milliseconds);

}  // namespace fexora::test
