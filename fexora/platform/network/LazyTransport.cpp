#include "fexora/platform/network/LazyTransport.h"

#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/base/Library.h"
#include "fexora/platform/network/ShownAddress.h"
#include "fexora/platform/network/WorkerThread.h"

namespace fexora {
namespace {

constexpr std::string_view kOpening = "Opening the network";
constexpr std::string_view kSending = "Sending a request";

// Joined at exit at the latest: nothing may be taken down under a thread that still loads it.
WorkerThread& opener() {
  static WorkerThread thread;
  return thread;
}

}  // namespace

void LazyTransport::follow(const std::string& address, Reader read, Completion complete,
                           const std::shared_ptr<Transfer>& transfer) {
  Request request{address, read, std::move(complete), transfer};
  if (state_ == State::closed) open();
  // Where the thread found no memory to tell of its end.
  if (isLooked_) opened();
  if (state_ == State::opening) {
    waiting_.push_back(std::move(request));
  } else {
    send(request);
  }
}

// Whatever it lacks, or throws, the next request tries again.
void LazyTransport::open() {
  host_ = makeHost_();
  const bool started = opener().start([this] {
    reason_ = kOutOfMemory;
    lacksMemory_ = !guarded(*host_.log, kOpening,
                            [this] { entry_ = moduleEntry("net", "fexora_net_module", reason_); });
    isLooked_ = true;
    guarded(*host_.log, kOpening, [this] { host_.loop->post([this] { opened(); }); });
  });
  if (started) {
    state_ = State::opening;
  } else {
    reason_ = "the machine gives no thread";
    sayWhy();
  }
}

void LazyTransport::opened() {
  if (!isLooked_.exchange(false)) return;
  opener().join();
  if (!guarded(*host_.log, kOpening, [this] { useModule(); })) lacksMemory_ = true;
  if (transport_ != nullptr) {
    state_ = State::open;
  } else {
    state_ = lacksMemory_ ? State::closed : State::missing;
  }
  // A completion may send the next request, which may open anew.
  for (const Request& request : std::exchange(waiting_, {})) {
    guarded(*host_.log, kSending, [&] { send(request); });
  }
}

void LazyTransport::useModule() {
  if (entry_ != nullptr) {
    reason_ = "the machine gives no thread or descriptor";
    const auto module = reinterpret_cast<NetModuleEntry*>(entry_);
    transport_ = module(host_.loop, host_.log, host_.files, &host_.options);
  }
  if (transport_ == nullptr) sayWhy();
}

void LazyTransport::sayWhy() {
  host_.log->write("No requests can be sent: " + reason_);
}

// The completion stays the request's when this throws.
void LazyTransport::send(const Request& request) {
  if (transport_ != nullptr) {
    return transport_->follow(request.address, request.read, request.complete, request.transfer);
  }
  const std::string address = shownAddress(request.address);
  ResponseError error{ResponseError::Kind::noTransport, address,
                      address + ": no request can be sent: " + reason_, 0};
  host_.loop->post([complete = request.complete, error = std::move(error)]() mutable {
    complete(nullptr, std::move(error));
  });
}

}  // namespace fexora
