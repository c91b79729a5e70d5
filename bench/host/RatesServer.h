// A rates service on the loopback address that gives one fixed answer to whoever asks.
#pragma once

#include <string>
#include <thread>

namespace fexora::bench {

class RatesServer {
 public:
  explicit RatesServer(const std::string& body);
  RatesServer(const RatesServer&) = delete;
  RatesServer& operator=(const RatesServer&) = delete;
  ~RatesServer();

  const std::string& address() const { return address_; }

 private:
  void serve();

  std::string answer_;
  std::string address_;
  int listener_;
  std::thread thread_;
};

}  // namespace fexora::bench
