// HTTP by libcurl on one worker thread, and its JSON read into records there.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>

#include "fexora/platform/base/Log.h"
#include "fexora/platform/files/Files.h"
#include "fexora/platform/loop/RunLoop.h"
#include "fexora/platform/network/NetOptions.h"
#include "fexora/platform/network/Transport.h"
#include "fexora/platform/network/curl/NetWorker.h"

namespace fexora {

class CurlTransport final : public Transport {
 public:
  // Null when the machine gives no thread or descriptor. What it is given outlives it. The thread
  // that runs the loop, which "main thread" means from here on.
  static std::unique_ptr<CurlTransport> make(RunLoop& loop, Log& log, Files& files,
                                             NetOptions options);
  // As after stop(). Main thread.
  ~CurlTransport() override = default;

  void get(const std::string& address, Reader read, Completion complete) override {
    follow(address, read, std::move(complete), nullptr);
  }
  void follow(const std::string& address, Reader read, Completion complete,
              const std::shared_ptr<Transfer>& transfer) override;

  // Ends the worker; requests in flight and later ones never complete. Main thread.
  void stop() { worker_.reset(); }

 private:
  // What stays on the main thread, where it was made; the worker knows the number.
  struct Request {
    Request() = default;
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;
    ~Request() {
      if (tellTimer != nullptr) tellTimer->invalidate();
    }
    Completion complete;
    std::shared_ptr<Transfer> transfer;  // or null
    std::shared_ptr<Timer> tellTimer;
  };
  using Pending = std::unordered_map<std::uint64_t, Request>;

  explicit CurlTransport(RunLoop& loop) : loop_(loop) {}
  void send(std::uint64_t id, const std::string& address, Reader read, Request& request);
  static void tellLater(RunLoop& loop, const std::shared_ptr<Pending>& pending, std::uint64_t id);
  static void deliver(Pending& pending, std::uint64_t id, NetOutcome outcome);

  std::shared_ptr<Pending> pending_ = std::make_shared<Pending>();
  std::uint64_t lastId_ = 0;
  RunLoop& loop_;
  std::unique_ptr<NetWorker> worker_;  // null once stopped
};

}  // namespace fexora
