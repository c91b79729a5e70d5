#include "fexora/platform/network/curl/CurlTransport.h"

#include <mutex>
#include <utility>

namespace fexora {

std::unique_ptr<CurlTransport> CurlTransport::make(RunLoop& loop, Log& log, Files& files,
                                                   NetOptions options) {
  // Here, not on the worker: the libraries underneath register their own clean-up for the exit of
  // the process, which must come after the end of the worker and so be registered before it.
  {
    static std::mutex mutex;  // not every libcurl takes two at once
    const std::lock_guard lock(mutex);
    if (curl_global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK) return nullptr;
  }
  std::unique_ptr<CurlTransport> transport(new CurlTransport(loop));
  auto finished = [&loop, pending = std::weak_ptr(transport->pending_)](std::uint64_t id,
                                                                        NetOutcome outcome) {
    // Handed on without a copy, which could find no memory.
    loop.post([pending, id, outcome = std::move(outcome)]() mutable {
      if (const auto here = pending.lock()) deliver(*here, id, std::move(outcome));
    });
  };
  transport->worker_ = NetWorker::start(log, files, std::move(options), std::move(finished));
  return transport->worker_ != nullptr ? std::move(transport) : nullptr;
}

void CurlTransport::follow(const std::string& address, Reader read, Completion complete,
                           const std::shared_ptr<Transfer>& transfer) {
  if (worker_ == nullptr) return;
  const std::uint64_t id = ++lastId_;
  try {
    Request& request = (*pending_)[id];
    request.complete = std::move(complete);
    request.transfer = transfer;
    send(id, address, read, request);
  } catch (...) {
    pending_->erase(id);
    throw;
  }
}

void CurlTransport::send(std::uint64_t id, const std::string& address, Reader read,
                         Request& request) {
  Exchange::Request exchange{id, address, read, nullptr};
  if (Transfer* const transfer = request.transfer.get()) {
    exchange.counts = transfer->counts();
    if (transfer->isTold()) tellLater(loop_, pending_, id);
    transfer->setEnding([wake = worker_->wake()] { wake->wake(); });
  }
  worker_->send(std::move(exchange));
}

void CurlTransport::tellLater(RunLoop& loop, const std::shared_ptr<Pending>& pending,
                              std::uint64_t id) {
  pending->at(id).tellTimer =
      loop.scheduleTimer(Transfer::kTellSpacing, [&loop, weak = std::weak_ptr(pending), id] {
        const auto here = weak.lock();
        if (here == nullptr || !here->contains(id)) return;
        const auto transfer = here->at(id).transfer;
        // Before it is told, which may end the transport.
        tellLater(loop, here, id);
        transfer->tell();
      });
}

void CurlTransport::deliver(Pending& pending, std::uint64_t id, NetOutcome outcome) {
  // Taken out first: the completion may send the next request or end the transport.
  auto node = pending.extract(id);
  if (!node.empty()) node.mapped().complete(std::move(outcome.record), std::move(outcome.error));
}

}  // namespace fexora
