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

#include "programs/sources/NamedSources.h"
#include "programs/sources/SourcesModule.h"
#include "programs/sources/TakenTables.h"

namespace fexora::c {
namespace {

Outcome readWith(const std::vector<sources::Operand>& operands, std::vector<RatesTable>& tables) {
  std::string reason;
  void* const entry = moduleEntry("sources", "fexora_sources_module", reason);
  if (entry == nullptr) return {FEXORA_REFUSED, "rates cannot be read: " + reason};
  sources::Reading reading;
  (*reinterpret_cast<sources::ReadSources*>(entry))(operands, reading);
  if (reading.tables.empty()) return {FEXORA_REFUSED, reading.problem};
  tables = std::move(reading.tables);
  return {};
}

// Whoever hands a text or a file over is not the service.
Outcome readForeign(std::string name, std::optional<std::string> text,
                    std::vector<RatesTable>& tables) {
  Outcome read = readWith({{std::move(name), std::move(text)}}, tables);
  for (RatesTable& table : tables) table.origin = RatesAnswer::Origin::file;
  return read;
}

Outcome readFile(const std::string& path, std::vector<RatesTable>& tables) {
  std::error_code unknown;
  // A link to a file is as good as the file.
  const auto place = std::filesystem::canonical(path, unknown);
  if (unknown) return {FEXORA_NETWORK, path + ": " + unknown.message()};
  const auto file = readWholeFile(Files::process(), place.string(), limits::kAnswerBytes);
  if (!file.ok()) return {FEXORA_NETWORK, path + ": " + file.error().message()};
  return readForeign(path, file->bytes, tables);
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

bool isWebAddress(std::string_view operand) {
  return operand.starts_with("http://") || operand.starts_with("https://");
}

bool isSourceName(std::string_view operand) {
  return operand == sources::kService || sources::namedSource(operand) != nullptr;
}

// One refresh: asks the steps, one after the other, each at one address after the other, until an
// answer is taken.
class Asking {
 public:
  Asking(fexora_session& session, std::vector<sources::SourceStep> steps, double seconds)
      : session_(session), steps_(std::move(steps)) {
    for (const sources::SourceStep& step : steps_) left_ += step.addresses.size();
    const double whole =
        limits::kRequestSeconds * static_cast<double>(std::max(left_, std::size_t{1}));
    until_ = monotonicClockSeconds() + (seconds > 0 ? std::min(seconds, whole) : whole);
  }

  // Why the first of them gave nothing, where none was taken.
  Outcome take() {
    const fexora_session::Turn turn(session_, until_);
    if (turn.isCancelled()) return {FEXORA_CANCELLED, "cancelled"};
    if (!turn.isOurs()) return {FEXORA_TIMEOUT, "another refresh has taken the time"};
    Outcome first;
    for (const sources::SourceStep& step : steps_) {
      Outcome outcome = step.addresses.empty()
                            ? Outcome{FEXORA_NETWORK, step.name + ": no address is known"}
                            : takeStep(step, turn);
      if (outcome.isOk() || turn.isCancelled()) return outcome;
      if (first.isOk()) first = outcome;
    }
    return first;
  }

 private:
  Outcome takeStep(const sources::SourceStep& step, const fexora_session::Turn& turn) {
    Outcome first;
    for (const std::string& address : step.addresses) {
      // None may take the time of those after it.
      const double now = monotonicClockSeconds();
      const double until = now + (until_ - now) / static_cast<double>(left_--);
      Fetched fetched;
      Outcome got = fetch(step, address, Request(session_, turn, until), fetched);
      if (turn.isCancelled()) return got;
      if (got.isOk()) return takeFetched(step, address, fetched);
      if (first.isOk()) first = got;
    }
    return first;
  }

  // What was fetched: the service's own answer, or tables.
  struct Fetched {
    std::shared_ptr<Response> answer;
    std::vector<RatesTable> tables;
  };

  Outcome takeFetched(const sources::SourceStep& step, const std::string& address,
                      Fetched& fetched) {
    if (fetched.answer != nullptr) {
      const Response& answer = *fetched.answer;
      Outcome taken = session_.take(answer, RatesAnswer::Origin::service);
      if (!taken.isOk()) return taken;
      fetched.tables.resize(1);
      fetched.tables[0].rates = answer.rates();
      fetched.tables[0].published = answer.published();
    } else {
      Outcome taken = session_.take(fetched.tables);
      if (!taken.isOk()) return taken;
    }
    session_.keep(sources::takenTables({step.name.empty() ? address : step.name}, fetched.tables));
    return {};
  }

  static Outcome fetch(const sources::SourceStep& step, const std::string& address,
                       Request&& request, Fetched& fetched) {
    if (step.isService) return request.answer(address, fetched.answer);
    const bool isNamed = !step.name.empty();
    if (isNamed && !address.starts_with("https://")) {
      return {FEXORA_NETWORK, shownAddress(address) + ": a source is asked by https only"};
    }
    std::string text;
    Outcome got = request.text(address, text);
    if (!got.isOk()) return got;
    return isNamed ? readWith({{step.name, std::move(text)}}, fetched.tables)
                   : readTables(shownAddress(address), std::move(text), fetched.tables);
  }

  fexora_session& session_;
  const std::vector<sources::SourceStep> steps_;
  double until_ = 0;
  std::size_t left_ = 0;  // addresses that have not been asked
};

}  // namespace

Outcome readTables(const std::string& name, std::string text, std::vector<RatesTable>& tables) {
  if (text.size() > limits::kAnswerBytes) return {FEXORA_REFUSED, name + ": it is too large"};
  return readForeign(name, std::move(text), tables);
}

Outcome refreshRates(fexora_session& session, const char* from, double seconds) {
  const bool isAddress = from != nullptr && isWebAddress(from);
  if (from != nullptr && !isAddress && !isSourceName(from)) {
    std::vector<RatesTable> tables;
    Outcome read = readFile(from, tables);
    if (read.isOk()) read = session.take(tables);
    if (read.isOk()) session.keep(sources::takenTables({from}, tables));
    return read;
  }
  if (isAddress) return Asking(session, {{{}, {from}}}, seconds).take();
  const auto steps = from != nullptr ? std::vector{sources::stepFor(from, session.ratesURL())}
                                     : sources::stepsFor(session.ratesFrom(), session.ratesURL());
  if (steps.empty())
    return {FEXORA_REFUSED, "the setting ratesFrom says that rates are from nowhere"};
  return Asking(session, steps, seconds).take();
}

}  // namespace fexora::c
