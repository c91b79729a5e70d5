#include "fexora/platform/network/curl/NetWorker.h"

#include <algorithm>
#include <utility>

#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/json/simdjson/JsonDocument.h"

namespace fexora {
namespace {

constexpr std::string_view kRequesting = "Requesting rates";

// Takes no memory itself, so it has no room for the address.
NetOutcome outOfMemory() {
  return {nullptr, ResponseError{ResponseError::Kind::tooLarge, {}, kOutOfMemory, 0}};
}

}  // namespace

std::unique_ptr<NetWorker> NetWorker::start(Log& log, Files& files, NetOptions options,
                                            Finished finished) {
  std::unique_ptr<NetWorker> worker(
      new NetWorker(log, files, std::move(options), std::move(finished)));
  if (worker->multi_ == nullptr || worker->wake_->descriptor() < 0) return nullptr;
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
  wake_->wake();
  thread_.join();
}

void NetWorker::send(Exchange::Request request) {
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(request));
  }
  wake_->wake();
}

void NetWorker::run() {
  constexpr int kPollMilliseconds = 60'000;
  while (beginWaiting()) {
    dropCancelled();
    int running = 0;
    curl_multi_perform(multi_.get(), &running);
    endDone();
    curl_waitfd wake{wake_->descriptor(), CURL_WAIT_POLLIN, 0};
    curl_multi_poll(multi_.get(), &wake, 1, kPollMilliseconds, nullptr);
    wake_->clear();
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
  const std::uint64_t id = request.id;
  std::optional<NetOutcome> outcome = outOfMemory();
  guarded(log_, kRequesting, [&] { outcome = tryToBegin(std::move(request)); });
  if (outcome) deliver(id, *std::move(outcome));
}

// Nothing when it has begun.
std::optional<NetOutcome> NetWorker::tryToBegin(Exchange::Request request) {
  auto kept = request.read != nullptr ? keptFor(request.address) : std::nullopt;
  auto exchange = std::make_unique<Exchange>(std::move(request), options_, std::move(kept));
  const CURLcode code = exchange->prepare();
  if (code != CURLE_OK) return exchange->outcome(code);
  CURL* const handle = exchange->handle();
  const auto at = running_.emplace(handle, std::move(exchange)).first;
  if (curl_multi_add_handle(multi_.get(), handle) == CURLM_OK) return std::nullopt;
  NetOutcome outcome = at->second->outcome(CURLE_OUT_OF_MEMORY);
  running_.erase(at);
  return outcome;
}

void NetWorker::dropCancelled() {
  const auto isCancelled = [](const auto& each) { return each.second->isCancelled(); };
  for (;;) {
    const auto at = std::find_if(running_.begin(), running_.end(), isCancelled);
    if (at == running_.end()) return;
    end(at->first, CURLE_ABORTED_BY_CALLBACK);
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
  NetOutcome outcome = outOfMemory();
  guarded(log_, kRequesting, [&] { outcome = exchange->outcome(code); });
  deliver(exchange->request().id, std::move(outcome));
  guarded(log_, "Keeping the service's answer", [&] { keep(*exchange); });
}

void NetWorker::deliver(std::uint64_t id, NetOutcome outcome) {
  guarded(log_, kRequesting, [&] { finished_(id, std::move(outcome)); });
}

// Only an answer that could stand in for the service's own is asked about.
std::optional<Revalidation> NetWorker::keptFor(const std::string& address) {
  auto stored = cache_.load(address);
  if (!stored) return std::nullopt;
  auto document = std::make_unique<const JsonDocument>(stored->body);
  if (document->object() == nullptr) return std::nullopt;
  return Revalidation{std::move(stored->etag), std::move(stored->lastModified),
                      std::move(document)};
}

void NetWorker::keep(const Exchange& exchange) {
  if (!exchange.toKeep() || cache_.save(exchange.request().address, *exchange.toKeep())) return;
  if (!std::exchange(saidNotKept_, true)) {
    log_.write("The service's answer could not be kept in " + options_.cacheFolder);
  }
}

}  // namespace fexora
