#include "fexora/platform/network/curl/CurlTransport.h"

#include <utility>

namespace fexora {

std::unique_ptr<CurlTransport> CurlTransport::make(RunLoop& loop, Log& log, Files& files,
                                                   NetOptions options) {
  // Here, not on the worker: the libraries underneath register their own clean-up for the exit of
  // the process, which must come after the end of the worker and so be registered before it.
  if (curl_global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK) return nullptr;
  std::unique_ptr<CurlTransport> transport(new CurlTransport());
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

void CurlTransport::get(const std::string& address, Reader read, Completion complete) {
  if (worker_ == nullptr) return;
  const std::uint64_t id = ++lastId_;
  Exchange::Request request{id, address, read};
  pending_->emplace(id, std::move(complete));
  try {
    worker_->send(std::move(request));
  } catch (...) {
    pending_->erase(id);
    throw;
  }
}

void CurlTransport::deliver(Pending& pending, std::uint64_t id, NetOutcome outcome) {
  // Taken out first: the completion may send the next request or end the transport.
  auto node = pending.extract(id);
  if (!node.empty()) node.mapped()(std::move(outcome.record), std::move(outcome.error));
}

}  // namespace fexora
