#include "programs/fexora/Refresh.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fexora/platform/network/ShownAddress.h"
#include "fexora/platform/text/OneLine.h"

#include "programs/fexora/Commands.h"
#include "programs/fexora/FromSources.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Progress.h"
#include "programs/shared/Currencies.h"
#include "programs/shared/RatesRequest.h"

namespace fexora::program {
namespace {

std::set<std::string> codesHeld(const StoreManager& store) {
  std::set<std::string> codes;
  for (const USDRateRef& rate : store.loadUSDRates().value_or(std::vector<USDRateRef>())) {
    codes.insert(rate->code());
  }
  return codes;
}

// What stays, after a reason why there is nothing new.
std::string whatStays(const StoreManager& store) {
  return hasRates(store) ? "; the cached rates stay: " + ratesLine() : "; no rates are cached";
}

Failure failureOf(const StoreManager& store, const ResponseError& error) {
  const bool isImplausible = error.kind == ResponseError::Kind::implausible;
  const std::string reason =
      isImplausible ? "the new rates look wrong: " + error.message + " (--force takes them)"
                    : error.message;
  return {Exit::network, kindOf(error), reason + whatStays(store)};
}

void refreshFromService(const StoreManager& store) {
  bool ended = false;
  std::optional<Failure> failure;
  Transfer::Progress received;
  rateManager().setProgress([&](const Transfer::Progress& now) { received = now; });
  startRefresh(store, [&](std::optional<Failure> problem) {
    failure = std::move(problem);
    ended = true;
  });
  waitFor(kTrelbyRatesURL, received, ended);
  rateManager().setProgress({});
  if (failure) throw Failure(*failure);
}

void refreshFrom(const std::vector<std::string>& sources, const StoreManager& store) {
  const auto origin =
      isAddress(sources.front()) ? RatesAnswer::Origin::service : RatesAnswer::Origin::file;
  std::shared_ptr<Response> answer;
  try {
    answer = answerFromSources(sources);
  } catch (Failure& failure) {
    failure.message += whatStays(store);
    throw;
  }
  if (const auto error = rateManager().takeAnswer(*answer, origin, true)) {
    throw failureOf(store, *error);
  }
}

void tellLosses(const std::set<std::string>& before, const std::set<std::string>& now) {
  std::vector<std::string> lost;
  std::set_difference(before.begin(), before.end(), now.begin(), now.end(),
                      std::back_inserter(lost));
  if (lost.empty()) return;
  printMessage("warning: " + std::to_string(lost.size()) +
               (lost.size() == 1 ? " currency has" : " currencies have") +
               " no rate any more: " + listed(lost));
}

void printRefresh(const CommandLine& line, std::size_t count) {
  const std::string& message = rateManager().serviceMessage();
  const Freshness fresh = rateManager().freshness();
  if (line.json) {
    JsonText json;
    json.beginObject().key("origin").string(text(fresh.origin));
    json.key("count").integer(static_cast<std::int64_t>(count)).key("message").string(message);
    json.key("updated").stringOrNull(ratesDate().updated).endObject();
    return printLine(json.text());
  }
  const std::string from = line.from.empty() ? "the service" : fresh.source;
  printLine(std::to_string(count) + " rates from " + from + ": " + ratesLine());
  if (!message.empty()) printLine("the service says: " + message);
}

}  // namespace

const char* kindOf(const ResponseError& error) {
  switch (error.kind) {
    case ResponseError::Kind::noTransport:
      return "noTransport";
    case ResponseError::Kind::noAddress:
      return "noAddress";
    case ResponseError::Kind::noConnection:
      return "noConnection";
    case ResponseError::Kind::timeOut:
      return "timeOut";
    case ResponseError::Kind::httpStatus:
      return "httpStatus";
    case ResponseError::Kind::tooLarge:
      return "tooLarge";
    case ResponseError::Kind::notJson:
      return "notJson";
    case ResponseError::Kind::notAnObject:
      return "notAnObject";
    case ResponseError::Kind::implausible:
      return "implausible";
    case ResponseError::Kind::cancelled:
      return "cancelled";
  }
  return "network";
}

void waitFor(const std::string& address, const Transfer::Progress& received, const bool& ended) {
  const Progress progress(oneLine("loading rates from " + shownAddress(address)), received);
  Platform::process().loop->runUntil([&] { return ended; });
  if (!ended) throw Failure{Exit::network, "noLoop", "there is no loop to wait with; see the log"};
}

void startRefresh(const StoreManager& store, std::function<void(std::optional<Failure>)> done) {
  askForFreshRates(rateManager(), [&store, done = std::move(done)](const ResponseError* error) {
    done(error != nullptr ? std::optional(failureOf(store, *error)) : std::nullopt);
  });
}

void refresh(const CommandLine& line) {
  if (!line.operands.empty()) throw usageFailure("refresh takes options only");
  StoreManager& store = openStoreInFolder();
  if (line.force) rateManager().setAnswerCheck({});
  const auto before = codesHeld(store);
  if (line.from.empty()) {
    refreshFromService(store);
  } else {
    refreshFrom(line.from, store);
  }
  const auto now = codesHeld(store);
  if (now.empty()) printMessage("warning: the answer holds no rates");
  tellLosses(before, now);
  printRefresh(line, store.loadUSDRates().value_or(std::vector<USDRateRef>()).size());
  requireSaved(store);
}

}  // namespace fexora::program
