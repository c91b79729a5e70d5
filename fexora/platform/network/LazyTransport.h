// The transport of a process that may never send a request: opens the net module on the first one.
//
// The module is opened on a thread of its own, since loading it and what it needs takes
// milliseconds from memory and far longer from a cold disk; requests wait meanwhile. Where it is
// missing, each request completes with an error of kind noTransport, and the log says why once.
// What the machine lacks for the moment (a thread, memory) costs the requests until then such an
// error, and the next one tries again. A request for which there is no memory does not complete:
// get() throws std::bad_alloc, or later the log says so.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fexora/platform/base/Log.h"
#include "fexora/platform/files/Files.h"
#include "fexora/platform/loop/RunLoop.h"
#include "fexora/platform/network/NetOptions.h"
#include "fexora/platform/network/Transport.h"

namespace fexora {

// Main thread; lives to the end of the process once it has been asked.
class LazyTransport final : public Transport {
 public:
  struct Host {
    RunLoop* loop;
    Log* log;
    Files* files;
    NetOptions options;
  };

  // `host` is called at the first request, and whenever opening is tried again.
  explicit LazyTransport(std::function<Host()> host) : makeHost_(std::move(host)) {}

  void get(const std::string& address, Reader read, Completion complete) override {
    follow(address, read, std::move(complete), nullptr);
  }
  void follow(const std::string& address, Reader read, Completion complete,
              const std::shared_ptr<Transfer>& transfer) override;

 private:
  enum class State { closed, opening, open, missing };
  struct Request {
    std::string address;
    Reader read;
    Completion complete;
    std::shared_ptr<Transfer> transfer;
  };

  void open();
  void opened();
  void useModule();
  void sayWhy();
  void send(const Request& request);

  std::function<Host()> makeHost_;
  Host host_{};
  State state_ = State::closed;
  std::vector<Request> waiting_;
  Transport* transport_ = nullptr;

  // Written by the opening thread until it ends.
  void* entry_ = nullptr;
  std::string reason_;
  bool lacksMemory_ = false;
  std::atomic<bool> isLooked_ = false;  // it has ended, and nobody has looked at that
};

}  // namespace fexora
