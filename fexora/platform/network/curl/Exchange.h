// One GET in flight: what is asked, what has come so far, and what that amounts to.
//
// Lives on the worker thread. Nothing throws but for memory that cannot be had.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <curl/curl.h>

#include "fexora/platform/json/simdjson/JsonDocument.h"
#include "fexora/platform/network/AnswerCache.h"
#include "fexora/platform/network/NetOptions.h"
#include "fexora/platform/network/ResponseError.h"
#include "fexora/platform/network/Transport.h"

namespace fexora {

// What an answer kept from earlier gives: how to ask whether it still stands, and its content.
struct Revalidation {
  std::string etag;
  std::string lastModified;
  std::unique_ptr<const JsonDocument> document;  // of an object
};

// What the request's reader made, or an error.
struct NetOutcome {
  std::shared_ptr<MappableModel> record;
  std::optional<ResponseError> error;
};

class Exchange {
 public:
  struct Request {
    std::uint64_t id = 0;
    std::string address;
    Transport::Reader read = nullptr;          // null: any text
    std::shared_ptr<Transfer::Counts> counts;  // null: nobody follows it
  };

  // With `kept` the service is asked whether that answer still stands. `options` outlives this.
  Exchange(Request request, const NetOptions& options, std::optional<Revalidation> kept);
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;

  const Request& request() const noexcept { return request_; }
  // Makes what is to be transferred; an error when there is no memory for it, the address cannot be
  // one, or it was cancelled by now.
  CURLcode prepare();
  CURL* handle() const noexcept { return handle_.get(); }
  bool isCancelled() const noexcept {
    return request_.counts != nullptr && request_.counts->isCancelled();
  }
  // The outcome once the transfer has ended with `code`, or could not begin. Once.
  NetOutcome outcome(CURLcode code);
  // What to keep after an outcome with a new answer.
  const std::optional<StoredAnswer>& toKeep() const noexcept { return toKeep_; }

 private:
  struct Cleanup {
    void operator()(CURL* handle) const noexcept { curl_easy_cleanup(handle); }
    void operator()(curl_slist* list) const noexcept { curl_slist_free_all(list); }
  };

  bool setOptions();
  bool setProgress();
  bool setHeaders();
  bool addHeader(const std::string& line);
  bool takeHeader(std::string_view line) noexcept;
  bool takeBody(const char* bytes, std::size_t count) noexcept;
  static std::size_t onHeader(char* bytes, std::size_t size, std::size_t count, void* self);
  static std::size_t onBody(char* bytes, std::size_t size, std::size_t count, void* self);
  static int onProgress(void* self, curl_off_t total, curl_off_t received, curl_off_t toSend,
                        curl_off_t sent);

  bool isSecure() const noexcept;
  long status() const noexcept;
  bool wasConnected() const noexcept;
  std::string answerHeader(const char* name) const;
  std::string detail(CURLcode code) const;
  NetOutcome newAnswer();
  NetOutcome failure(CURLcode code) const;
  NetOutcome statusFailure(std::string_view detail) const;
  NetOutcome fail(ResponseError::Kind kind, std::string_view detail) const;

  Request request_;
  const NetOptions& options_;
  std::optional<Revalidation> kept_;
  std::unique_ptr<curl_slist, Cleanup> headers_;
  std::unique_ptr<CURL, Cleanup> handle_;
  std::array<char, CURL_ERROR_SIZE> detailText_{};

  std::size_t headerBytes_ = 0;
  bool headEnded_ = false;  // of the last answer on the way
  bool tooLarge_ = false;
  std::string body_;
  std::optional<StoredAnswer> toKeep_;
};

}  // namespace fexora
