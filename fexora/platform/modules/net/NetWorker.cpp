#include "fexora/platform/modules/net/NetWorker.h"

#include <new>
#include <utility>

#include "fexora/platform/modules/net/JsonDocument.h"

namespace fexora {

std::unique_ptr<NetWorker> NetWorker::start(Log& log, Files& files, NetOptions options,
                                            Finished finished) {
  std::unique_ptr<NetWorker> worker(
      new NetWorker(log, files, std::move(options), std::move(finished)));
  if (worker->multi_ == nullptr || worker->wake_.descriptor() < 0) return nullptr;
  if (!worker->thread_.start([self = worker.get()] { self->run(); })) return nullptr;
  return worker;
}

NetWorker::NetWorker(Log& log, Files& files, NetOptions options, Finished finished)
    : log_(log),
      options_(std::move(options)),
      finished_(std::move(finished)),
      multi_(curl_multi_init()),
      cache_(files, options_.cacheFolder, options_.container, options_.answerBytes) {}

NetWorker::~NetWorker() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  wake_.wake();
  thread_.join();
}

void NetWorker::send(Exchange::Request request) {
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(request));
  }
  wake_.wake();
}

void NetWorker::run() {
  constexpr int kPollMilliseconds = 60'000;
  while (beginWaiting()) {
    int running = 0;
    curl_multi_perform(multi_.get(), &running);
    endDone();
    curl_waitfd wake{wake_.descriptor(), CURL_WAIT_POLLIN, 0};
    curl_multi_poll(multi_.get(), &wake, 1, kPollMilliseconds, nullptr);
    wake_.clear();
  }
  for (const auto& [handle, exchange] : running_) curl_multi_remove_handle(multi_.get(), handle);
  running_.clear();
}

// False when the worker is to end.
bool NetWorker::beginWaiting() {
  std::vector<Exchange::Request> requests;
  {
    const std::lock_guard lock(mutex_);
    if (stopping_) return false;
    requests.swap(waiting_);
  }
  for (auto& request : requests) begin(std::move(request));
  return true;
}

void NetWorker::begin(Exchange::Request request) {
  auto kept = keptFor(request.address);
  auto exchange = std::make_unique<Exchange>(std::move(request), options_, std::move(kept));
  CURLcode code = exchange->prepare();
  CURL* handle = exchange->handle();
  if (code == CURLE_OK && curl_multi_add_handle(multi_.get(), handle) != CURLM_OK) {
    code = CURLE_OUT_OF_MEMORY;
  }
  if (code == CURLE_OK) {
    running_.emplace(handle, std::move(exchange));
  } else {
    finished_(exchange->request().id, exchange->reply(code));
  }
}

void NetWorker::endDone() {
  int left = 0;
  while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
    if (message->msg == CURLMSG_DONE) end(message->easy_handle, message->data.result);
  }
}

void NetWorker::end(CURL* handle, CURLcode code) {
  const auto at = running_.find(handle);
  if (at == running_.end()) return;
  const auto exchange = std::move(at->second);
  running_.erase(at);
  curl_multi_remove_handle(multi_.get(), handle);
  finished_(exchange->request().id, exchange->reply(code));
  keep(*exchange);
}

// Only an answer that could stand in for the service's own is asked about.
std::optional<Revalidation> NetWorker::keptFor(const std::string& address) try {
  auto stored = cache_.load(address);
  if (!stored) return std::nullopt;
  auto document = std::make_unique<const JsonDocument>(stored->body);
  if (document->object() == nullptr) return std::nullopt;
  return Revalidation{std::move(stored->etag), std::move(stored->lastModified),
                      std::move(document)};
} catch (const std::bad_alloc&) {
  return std::nullopt;
}

void NetWorker::keep(const Exchange& exchange) {
  if (!exchange.toKeep() || save(exchange.request().address, *exchange.toKeep())) return;
  if (!std::exchange(saidNotKept_, true)) {
    log_.write("The service's answer could not be kept in " + options_.cacheFolder);
  }
}

bool NetWorker::save(const std::string& address, const StoredAnswer& answer) try {
  return cache_.save(address, answer);
} catch (const std::bad_alloc&) {
  return false;
}

}  // namespace fexora
