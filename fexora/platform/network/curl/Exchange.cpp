#include "fexora/platform/network/curl/Exchange.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "fexora/platform/base/Environment.h"
#include "fexora/platform/network/ShownAddress.h"
#include "fexora/platform/text/OneLine.h"

namespace fexora {
namespace {

constexpr const char* kUserAgent = "fexora/" FEXORA_VERSION;
constexpr const char* kProtocols = "http,https";
constexpr long kOk = 200;
constexpr long kNotModified = 304;
constexpr std::size_t kShownCharacters = 200;

bool isRedirect(long status) {
  return status >= 300 && status < 400 && status != kNotModified;
}

long milliseconds(double seconds) {
  return seconds > 0.001 ? std::lround(std::min(seconds, 1e6) * 1000) : 1;
}

template <class T>
bool set(CURL* handle, CURLoption option, T value) {
  return curl_easy_setopt(handle, option, value) == CURLE_OK;
}

}  // namespace

Exchange::Exchange(Request request, const NetOptions& options, std::optional<Revalidation> kept)
    : request_(std::move(request)), options_(options), kept_(std::move(kept)) {}

CURLcode Exchange::prepare() {
  if (isCancelled()) return CURLE_ABORTED_BY_CALLBACK;
  // The library underneath would see only what stands before a null character.
  if (request_.address.find('\0') != std::string::npos) return CURLE_URL_MALFORMAT;
  handle_.reset(curl_easy_init());
  return handle_ != nullptr && setOptions() && setHeaders() ? CURLE_OK : CURLE_OUT_OF_MEMORY;
}

bool Exchange::setOptions() {
  CURL* handle = handle_.get();
  return set(handle, CURLOPT_URL, request_.address.c_str()) &&
         set(handle, CURLOPT_PROTOCOLS_STR, kProtocols) &&
         // Whoever asked by https is never led to where anybody on the way can answer.
         set(handle, CURLOPT_REDIR_PROTOCOLS_STR, isSecure() ? "https" : kProtocols) &&
         (options_.authorities.empty() ||
          set(handle, CURLOPT_CAINFO, options_.authorities.c_str())) &&
         set(handle, CURLOPT_FOLLOWLOCATION, 1L) &&
         set(handle, CURLOPT_MAXREDIRS, static_cast<long>(options_.redirects)) &&
         set(handle, CURLOPT_CONNECTTIMEOUT_MS, milliseconds(options_.connectSeconds)) &&
         set(handle, CURLOPT_TIMEOUT_MS, milliseconds(options_.requestSeconds)) &&
         // libcurl takes proxies from the environment, whoever set it.
         (!hasMoreRightsThanItsUser() || set(handle, CURLOPT_PROXY, "")) &&
         set(handle, CURLOPT_NOSIGNAL, 1L) &&
         // A look-up that is still waiting for its name server is left behind, not waited for.
         set(handle, CURLOPT_QUICK_EXIT, 1L) && set(handle, CURLOPT_ACCEPT_ENCODING, "gzip") &&
         set(handle, CURLOPT_USERAGENT, kUserAgent) &&
         // Rejects a declared length at once; what really comes is counted in takeBody, since this
         // limit does not see inflated bytes.
         set(handle, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(options_.answerBytes)) &&
         set(handle, CURLOPT_HEADERFUNCTION, &Exchange::onHeader) &&
         set(handle, CURLOPT_HEADERDATA, static_cast<void*>(this)) &&
         set(handle, CURLOPT_WRITEFUNCTION, &Exchange::onBody) &&
         set(handle, CURLOPT_WRITEDATA, static_cast<void*>(this)) &&
         (request_.counts == nullptr || setProgress()) &&
         set(handle, CURLOPT_ERRORBUFFER, detailText_.data()) &&
         set(handle, CURLOPT_PRIVATE, static_cast<void*>(this));
}

bool Exchange::isSecure() const noexcept {
  return request_.address.starts_with("https://");
}

bool Exchange::setProgress() {
  CURL* handle = handle_.get();
  return set(handle, CURLOPT_NOPROGRESS, 0L) &&
         set(handle, CURLOPT_XFERINFOFUNCTION, &Exchange::onProgress) &&
         set(handle, CURLOPT_XFERINFODATA, static_cast<void*>(this));
}

bool Exchange::setHeaders() {
  if (!addHeader(request_.read != nullptr ? "Accept: application/json" : "Accept: */*"))
    return false;
  if (kept_ && !kept_->etag.empty() && !addHeader("If-None-Match: " + kept_->etag)) return false;
  if (kept_ && !kept_->lastModified.empty() &&
      !addHeader("If-Modified-Since: " + kept_->lastModified)) {
    return false;
  }
  return set(handle_.get(), CURLOPT_HTTPHEADER, headers_.get());
}

bool Exchange::addHeader(const std::string& line) {
  curl_slist* longer = curl_slist_append(headers_.get(), line.c_str());
  if (longer == nullptr) return false;
  static_cast<void>(headers_.release());
  headers_.reset(longer);
  return true;
}

std::size_t Exchange::onHeader(char* bytes, std::size_t /*size*/, std::size_t count, void* self) {
  return static_cast<Exchange*>(self)->takeHeader({bytes, count}) ? count : 0;
}

std::size_t Exchange::onBody(char* bytes, std::size_t /*size*/, std::size_t count, void* self) {
  return static_cast<Exchange*>(self)->takeBody(bytes, count) ? count : 0;
}

// Of what comes before the answer, as redirects do, nothing is told.
int Exchange::onProgress(void* self, curl_off_t total, curl_off_t received, curl_off_t /*toSend*/,
                         curl_off_t /*sent*/) {
  const auto& exchange = *static_cast<const Exchange*>(self);
  if (received > 0 && exchange.status() == kOk) {
    exchange.request_.counts->set(static_cast<std::uint64_t>(received),
                                  static_cast<std::uint64_t>(std::max<curl_off_t>(total, 0)));
  }
  return 0;
}

bool Exchange::takeHeader(std::string_view line) noexcept {
  headerBytes_ += line.size();
  headEnded_ = line == "\r\n" || line == "\n" || (headEnded_ && !line.starts_with("HTTP/"));
  tooLarge_ = tooLarge_ || headerBytes_ > options_.headerBytes;
  return !tooLarge_;
}

bool Exchange::takeBody(const char* bytes, std::size_t count) noexcept {
  // What any other status has to say is not read.
  if (status() != kOk) return false;
  tooLarge_ = tooLarge_ || count > options_.answerBytes - body_.size();
  if (tooLarge_) return false;
  try {
    body_.append(bytes, count);
  } catch (const std::bad_alloc&) {
    tooLarge_ = true;
  }
  return !tooLarge_;
}

long Exchange::status() const noexcept {
  long status = 0;
  curl_easy_getinfo(handle_.get(), CURLINFO_RESPONSE_CODE, &status);
  return status;
}

bool Exchange::wasConnected() const noexcept {
  const char* peer = nullptr;
  curl_easy_getinfo(handle_.get(), CURLINFO_PRIMARY_IP, &peer);
  return peer != nullptr && *peer != '\0';
}

// Empty when the last answer on the way has no such header, or one that could not be sent back.
std::string Exchange::answerHeader(const char* name) const {
  constexpr int kLastAnswer = -1;
  curl_header* header = nullptr;
  if (curl_easy_header(handle_.get(), name, 0, CURLH_HEADER, kLastAnswer, &header) != CURLHE_OK) {
    return {};
  }
  return isHeaderText(header->value) ? header->value : std::string();
}

std::string Exchange::detail(CURLcode code) const {
  const std::string text = detailText_.data();
  // One that fills its room may end within a proxy's secret, which nothing then marks as one.
  const bool isWhole = !text.empty() && text.size() + 1 < detailText_.size();
  return isWhole ? text : curl_easy_strerror(code);
}

NetOutcome Exchange::outcome(CURLcode code) {
  if (code != CURLE_OK || tooLarge_) return failure(code);
  if (!headEnded_) return fail(ResponseError::Kind::noConnection, "the answer broke off");
  if (status() == kOk) return newAnswer();
  if (status() == kNotModified && kept_) return {request_.read(*kept_->document->object()), {}};
  return statusFailure({});
}

NetOutcome Exchange::newAnswer() {
  if (request_.read == nullptr) return {std::make_shared<TextAnswer>(std::move(body_)), {}};
  const JsonDocument document(body_);
  if (document.state() == JsonDocument::State::tooLarge) {
    return fail(ResponseError::Kind::tooLarge, document.reason());
  }
  if (document.state() != JsonDocument::State::value) {
    return fail(ResponseError::Kind::notJson, document.reason());
  }
  if (document.object() == nullptr) return fail(ResponseError::Kind::notAnObject, {});
  auto record = request_.read(*document.object());
  StoredAnswer answer{answerHeader("ETag"), answerHeader("Last-Modified"), std::move(body_)};
  if (answer.hasValidator()) toKeep_ = std::move(answer);
  return {std::move(record), {}};
}

NetOutcome Exchange::failure(CURLcode code) const {
  using Kind = ResponseError::Kind;
  const long status = this->status();
  if (code == CURLE_ABORTED_BY_CALLBACK) return fail(Kind::cancelled, {});
  if (tooLarge_) return fail(Kind::tooLarge, "the answer is larger than allowed");
  // A final status decides, whatever became of the body after it.
  if (status >= kOk && status != kOk && status != kNotModified && !isRedirect(status)) {
    return statusFailure({});
  }
  switch (code) {
    case CURLE_WRITE_ERROR:  // takeBody rejected a body of this status
      return statusFailure({});
    case CURLE_TOO_MANY_REDIRECTS:
      return statusFailure("too many redirects");
    case CURLE_URL_MALFORMAT:
    case CURLE_UNSUPPORTED_PROTOCOL:
      if (status != 0)
        return statusFailure(isSecure() ? "the redirect leads to what is no https address"
                                        : "the redirect leads to what is no HTTP address");
      // The same code says that a server answered something other than HTTP.
      return fail(wasConnected() ? Kind::noConnection : Kind::noAddress, detail(code));
    case CURLE_PEER_FAILED_VERIFICATION:
      return fail(Kind::notTrusted, detail(code));
    case CURLE_COULDNT_RESOLVE_HOST:
      return fail(Kind::noAddress, detail(code));
    case CURLE_OPERATION_TIMEDOUT:
      return fail(Kind::timeOut, detail(code));
    case CURLE_FILESIZE_EXCEEDED:
    case CURLE_OUT_OF_MEMORY:  // before 8.6 also one header line without end
#if LIBCURL_VERSION_NUM >= 0x080600
    case CURLE_TOO_LARGE:
#endif
      return fail(Kind::tooLarge, detail(code));
    case CURLE_BAD_CONTENT_ENCODING:
      return fail(Kind::notJson, detail(code));
    default:
      return fail(Kind::noConnection, detail(code));
  }
}

NetOutcome Exchange::statusFailure(std::string_view detail) const {
  NetOutcome outcome = fail(ResponseError::Kind::httpStatus, detail);
  outcome.error->status = static_cast<int>(status());
  return outcome;
}

NetOutcome Exchange::fail(ResponseError::Kind kind, std::string_view detail) const {
  std::string address = shownAddress(request_.address);
  std::string message = oneLine(address, kShownCharacters) + ": " + text(kind);
  if (kind == ResponseError::Kind::httpStatus) message.append(" ").append(std::to_string(status()));
  if (!detail.empty()) message += ": " + oneLine(shownAddress(detail), kShownCharacters);
  return {{}, ResponseError{kind, std::move(address), std::move(message), 0}};
}

}  // namespace fexora
