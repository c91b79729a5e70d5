#include "fexora/platform/network/LazyTransport.h"

#include "fexora/platform/files/ContainerFolder.h"
#include "fexora/platform/foundation/Environment.h"
#include "fexora/platform/foundation/Guarded.h"
#include "fexora/platform/foundation/Library.h"
#include "fexora/platform/network/RetryShortage.h"
#include "fexora/platform/network/ShownAddress.h"
#include "fexora/platform/network/WorkerThread.h"

namespace fexora {
namespace {

constexpr std::string_view kOpening = "Opening the network";

// Joined at exit at the latest: nothing may be taken down under a thread that still loads it.
WorkerThread& opener() {
  static WorkerThread thread;
  return thread;
}

std::string cacheFolder() {
  auto cache = environment("XDG_CACHE_HOME");
  if (!cache || !cache->starts_with('/')) {
    cache = environment("HOME");
    if (!cache) return {};
    cache->append("/.cache");
  }
  return cache->append("/fexora");
}

}  // namespace

NetOptions processNetOptions() {
  NetOptions options;
  options.cacheFolder = cacheFolder();
  options.container = containerPath({});
  return options;
}

void LazyTransport::get(const std::string& address, Reader read, Completion complete) {
  Request request{address, read, std::move(complete)};
  if (state_ == State::closed) open();
  if (state_ == State::opening) {
    waiting_.push_back(std::move(request));
  } else {
    send(std::move(request));
  }
}

void LazyTransport::open() {
  host_ = makeHost_();
  state_ = State::opening;
  const bool started = opener().start([this] {
    reason_ = kOutOfMemory;
    guarded(*host_.log, kOpening,
            [this] { entry_ = moduleEntry("net", "fexora_net_module", reason_); });
    retryShortage([this] { host_.loop->post([this] { opened(); }); }, [] { return false; });
  });
  if (started) return;
  reason_ = "the machine gives no thread";
  settle(State::missing);
}

void LazyTransport::opened() {
  opener().join();
  if (entry_ != nullptr) {
    reason_ = "the machine gives no thread or descriptor";
    const auto module = reinterpret_cast<NetModuleEntry*>(entry_);
    guarded(*host_.log, kOpening,
            [&] { transport_ = module(host_.loop, host_.log, host_.files, &host_.options); });
  }
  settle(transport_ != nullptr ? State::open : State::missing);
}

void LazyTransport::settle(State state) {
  state_ = state;
  if (state == State::missing) host_.log->write("No requests can be sent: " + reason_);
  for (Request& request : std::exchange(waiting_, {})) send(std::move(request));
}

void LazyTransport::send(Request request) {
  if (transport_ != nullptr) {
    return transport_->get(request.address, request.read, std::move(request.complete));
  }
  const std::string address = shownAddress(request.address);
  ResponseError error{ResponseError::Kind::noTransport, address,
                      address + ": no request can be sent: " + reason_, 0};
  host_.loop->post([complete = std::move(request.complete), error = std::move(error)] {
    complete(nullptr, error);
  });
}

}  // namespace fexora
