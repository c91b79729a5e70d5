#include "c/Fetch.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "fexora/platform/base/Library.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/files/ReadFile.h"
#include "fexora/platform/loop/Clocks.h"
#include "fexora/platform/network/OwnTransport.h"

#include "programs/sources/SourcesModule.h"

namespace fexora::c {
namespace {

Outcome readWith(std::vector<sources::Operand> operands, std::vector<RatesTable>& tables) {
  std::string reason;
  void* const entry = moduleEntry("sources", "fexora_sources_module", reason);
  if (entry == nullptr) return {FEXORA_REFUSED, "rates cannot be read: " + reason};
  sources::Reading reading;
  (*reinterpret_cast<sources::ReadSources*>(entry))(operands, reading);
  if (reading.tables.empty()) return {FEXORA_REFUSED, reading.problem};
  tables = std::move(reading.tables);
  // Whoever hands a text or a file over is not the service.
  for (RatesTable& table : tables) table.origin = RatesAnswer::Origin::file;
  return {};
}

Outcome readFile(const std::string& path, std::vector<RatesTable>& tables) {
  std::error_code unknown;
  // A link to a file is as good as the file.
  const auto place = std::filesystem::canonical(path, unknown);
  if (unknown) return {FEXORA_NETWORK, path + ": " + unknown.message()};
  const auto file = readWholeFile(Files::process(), place.string(), limits::kAnswerBytes);
  if (!file.ok()) return {FEXORA_NETWORK, path + ": " + file.error().message()};
  return readWith({{path, file->bytes}}, tables);
}

fexora_code codeOf(ResponseError::Kind kind) {
  switch (kind) {
    case ResponseError::Kind::timeOut:
      return FEXORA_TIMEOUT;
    case ResponseError::Kind::notJson:
    case ResponseError::Kind::notAnObject:
    case ResponseError::Kind::implausible:
    case ResponseError::Kind::tooLarge:
      return FEXORA_REFUSED;
    case ResponseError::Kind::cancelled:
      return FEXORA_CANCELLED;
    default:
      return FEXORA_NETWORK;
  }
}

// One request with all that it stands on.
class Request {
 public:
  Request(fexora_session& session, const fexora_session::Turn& turn, double until)
      : log_(session.log()), turn_(turn), until_(until) {
    NetOptions options = session.netOptions();
    const double left = std::max(until - monotonicClockSeconds(), 0.0);
    options.requestSeconds = std::min(options.requestSeconds, left);
    options.connectSeconds = std::min(options.connectSeconds, left);
    std::string reason;
    transport_ = ownTransport(loop_, log_, session.files(), options, reason);
    if (transport_ == nullptr) outcome_ = {FEXORA_NETWORK, "no request can be sent: " + reason};
  }

  Outcome answer(const std::string& address, std::shared_ptr<Response>& answer) {
    if (transport_ == nullptr) return outcome_;
    NetworkManager::simpleRequest<Response>(
        *transport_, address,
        [&](std::shared_ptr<Response> record, const std::optional<ResponseError>& error) {
          answer = std::move(record);
          end(address, answer != nullptr, error);
        });
    return wait(address);
  }

  Outcome text(const std::string& address, std::string& text) {
    if (transport_ == nullptr) return outcome_;
    NetworkManager::textRequest(
        *transport_, address,
        [&](std::optional<std::string> got, const std::optional<ResponseError>& error) {
          end(address, got.has_value(), error);
          if (got) text = *std::move(got);
        });
    return wait(address);
  }

 private:
  void end(const std::string& address, bool isThere, const std::optional<ResponseError>& error) {
    isDone_ = true;
    if (error) {
      outcome_ = {codeOf(error->kind), error->message};
    } else if (!isThere) {
      outcome_ = {FEXORA_REFUSED, shownAddress(address) + ": no rates in the answer"};
    }
  }

  Outcome wait(const std::string& address) {
    bool isLate = false;
    const auto cancel = loop_.watchReadable(turn_.descriptor(), [] {});
    const auto timer =
        loop_.scheduleTimer(until_ - monotonicClockSeconds(), [&isLate] { isLate = true; });
    loop_.runUntil([&] { return isDone_ || isLate || turn_.isCancelled(); });
    // What is still in flight is dropped with the transport.
    transport_.reset();
    if (turn_.isCancelled()) return {FEXORA_CANCELLED, shownAddress(address) + ": cancelled"};
    if (!isDone_) return {FEXORA_TIMEOUT, shownAddress(address) + ": no answer in time"};
    return outcome_;
  }

  Log& log_;
  const fexora_session::Turn& turn_;
  const double until_;
  EpollLoop loop_{log_};
  std::unique_ptr<Transport> transport_;
  bool isDone_ = false;
  Outcome outcome_;
};

}  // namespace

Outcome readTables(const std::string& name, std::string text, std::vector<RatesTable>& tables) {
  if (text.size() > limits::kAnswerBytes) return {FEXORA_REFUSED, name + ": it is too large"};
  return readWith({{name, std::move(text)}}, tables);
}

Outcome fetchRates(fexora_session& session, const fexora_session::Turn& turn, const char* from,
                   double until, Fetched& fetched) {
  if (turn.isCancelled()) return {FEXORA_CANCELLED, "cancelled"};
  if (!turn.isOurs()) return {FEXORA_TIMEOUT, "another refresh has taken the time"};
  const std::string operand = from != nullptr ? from : session.ratesURL();
  const bool isAddress = operand.starts_with("http://") || operand.starts_with("https://");
  if (from != nullptr && !isAddress) return readFile(operand, fetched.tables);
  Request request(session, turn, until);
  if (from == nullptr) return request.answer(operand, fetched.answer);
  std::string text;
  const Outcome got = request.text(operand, text);
  return got.isOk() ? readTables(shownAddress(operand), std::move(text), fetched.tables) : got;
}

}  // namespace fexora::c
