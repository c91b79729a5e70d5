#include "programs/fexora/Refresh.h"

#include <string>
#include <utility>

#include "fexora/platform/network/ShownAddress.h"

#include "programs/fexora/Commands.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Progress.h"
#include "programs/shared/OneLine.h"

namespace fexora::program {
namespace {

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
  }
  return "network";
}

std::size_t countRates(const StoreManager& store) {
  const auto rates = store.loadUSDRates();
  return rates ? rates->size() : 0;
}

Failure failureOf(const StoreManager& store, const ResponseError& error) {
  const std::string stay = countRates(store) > 0
                               ? "; the cached rates stay: " + ratesLine(ratesDate())
                               : "; no rates are cached";
  return {Exit::network, kindOf(error), error.message + stay};
}

void printRefresh(const CommandLine& line, std::size_t count) {
  const std::string& message = rateManager().serviceMessage();
  if (line.json) {
    JsonText json;
    json.beginObject().key("origin").string("service");
    json.key("count").integer(static_cast<std::int64_t>(count)).key("message").string(message);
    json.key("updated").stringOrNull(ratesDate().updated).endObject();
    return printLine(json.text());
  }
  printLine(std::to_string(count) + " rates from the service: " + ratesLine(ratesDate()));
  if (!message.empty()) printLine("the service says: " + oneLine(message));
}

}  // namespace

void startRefresh(const StoreManager& store, std::function<void(std::optional<Failure>)> done) {
  RateManager& rates = rateManager();
  // Whoever asks for fresh rates gets a request, however soon after the last.
  rates.setLastUpdate(std::nullopt);
  // No pair is derived: nothing is converted here.
  rates.loadRates(std::vector<CurrencyRef>(),
                  [&store, done = std::move(done)](bool fromCache, const ResponseError* error) {
                    if (fromCache) return;
                    done(error != nullptr ? std::optional(failureOf(store, *error)) : std::nullopt);
                  });
}

void refresh(const CommandLine& line) {
  if (!line.operands.empty()) throw usageFailure("refresh takes options only");
  StoreManager& store = openStoreInFolder();
  bool ended = false;
  std::optional<Failure> failure;
  startRefresh(store, [&](std::optional<Failure> problem) {
    failure = std::move(problem);
    ended = true;
  });
  {
    const Progress progress(oneLine("loading rates from " + shownAddress(kTrelbyRatesURL)));
    Platform::process().loop->runUntil([&] { return ended; });
  }
  if (!ended) throw Failure{Exit::network, "noLoop", "there is no loop to wait with; see the log"};
  if (failure) throw Failure(*failure);
  const std::size_t count = countRates(store);
  if (count == 0) printMessage("warning: the service's answer holds no rates");
  printRefresh(line, count);
  requireSaved(store);
}

}  // namespace fexora::program
