// The thread on which all requests of one transport run, side by side: look-up, transfer, decoding
// and the kept answers, so that none of it is ever waited for on the main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include <curl/curl.h>

#include "fexora/platform/base/Log.h"
#include "fexora/platform/loop/WakeUp.h"
#include "fexora/platform/network/AnswerCache.h"
#include "fexora/platform/network/NetOptions.h"
#include "fexora/platform/network/WorkerThread.h"
#include "fexora/platform/network/curl/Exchange.h"

namespace fexora {

class NetWorker {
 public:
  // Called on the worker thread, once for each request that ends before the worker is stopped; not
  // where there is no memory for the call, which the log says.
  using Finished = std::function<void(std::uint64_t id, NetOutcome outcome)>;

  // Null when the machine gives no thread or descriptor.
  static std::unique_ptr<NetWorker> start(Log& log, Files& files, NetOptions options,
                                          Finished finished);
  NetWorker(const NetWorker&) = delete;
  NetWorker& operator=(const NetWorker&) = delete;
  // Ends the thread, within the time of one decoding or one flush at most; what is in flight is
  // dropped. Main thread.
  ~NetWorker();

  // Any thread.
  void send(Exchange::Request request);
  // Makes it look for requests that were cancelled; may outlive it. Any thread.
  const std::shared_ptr<const WakeUp>& wake() const noexcept { return wake_; }

 private:
  struct Cleanup {
    void operator()(CURLM* multi) const noexcept { curl_multi_cleanup(multi); }
  };

  NetWorker(Log& log, Files& files, NetOptions options, Finished finished);
  void run();
  bool beginWaiting();
  void begin(Exchange::Request request);
  std::optional<NetOutcome> tryToBegin(Exchange::Request request);
  void dropCancelled();
  void endDone();
  void end(CURL* handle, CURLcode code);
  void deliver(std::uint64_t id, NetOutcome outcome);
  std::optional<Revalidation> keptFor(const std::string& address);
  void keep(const Exchange& exchange);

  Log& log_;
  const NetOptions options_;
  const Finished finished_;
  const std::shared_ptr<const WakeUp> wake_ =
      std::make_shared<const WakeUp>();  // libcurl's own may be missing or fail without a word
  std::unique_ptr<CURLM, Cleanup> multi_;

  std::mutex mutex_;
  std::vector<Exchange::Request> waiting_;  // under mutex_
  bool stopping_ = false;                   // under mutex_

  // The worker thread's own.
  AnswerCache cache_;
  bool saidNotKept_ = false;
  std::unordered_map<CURL*, std::unique_ptr<Exchange>> running_;

  WorkerThread thread_;  // last: it uses all of the above
};

}  // namespace fexora
