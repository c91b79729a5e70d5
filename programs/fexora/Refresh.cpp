#include "programs/fexora/Refresh.h"

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fexora/platform/text/OneLine.h"

#include "programs/fexora/Commands.h"
#include "programs/fexora/FromSources.h"
#include "programs/fexora/HistoryImport.h"
#include "programs/fexora/KeptAnswers.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Waiting.h"
#include "programs/shared/FreshRates.h"
#include "programs/shared/RatesText.h"

namespace fexora::program {
namespace {

// What stays, after a reason why there is nothing new.
std::string whatStays(const StoreManager& store) {
  if (!hasRates(store)) return "; no rates are cached, so the bundled ones are used";
  return "; the cached rates stay: " + ratesText(rateManager().freshness());
}

bool isWithoutRates() {
  const auto& against = rateManager().verdict().against;
  return against && against->kind == RatesReason::Kind::noRates;
}

// What a person may type next.
std::string advice(const RatesProblem& problem) {
  using Kind = ResponseError::Kind;
  switch (problem.cause) {
    case RatesProblem::Cause::refused:
      // Without any it would only empty the store.
      return isWithoutRates() ? "" : " (fexora refresh --force takes them)";
    case RatesProblem::Cause::nowhere:
      return "";
    case RatesProblem::Cause::unread:
      return " (another source: fexora refresh --from ecb)";
    case RatesProblem::Cause::request:
      break;
  }
  const Kind kind = problem.error.kind;
  const bool isOffline =
      kind == Kind::noAddress || kind == Kind::noConnection || kind == Kind::timeOut;
  return isOffline
             ? " (once online again: fexora refresh; another source: fexora refresh --from ecb)"
             : " (another source: fexora refresh --from ecb)";
}

Failure failureOf(const StoreManager& store, const RatesProblem& problem) {
  const std::string end = advice(problem) + whatStays(store);
  switch (problem.cause) {
    case RatesProblem::Cause::refused:
      return {Exit::network, "implausible",
              "the new rates look wrong: " + problem.error.message + end};
    case RatesProblem::Cause::nowhere:
      return {Exit::network, "nowhere",
              "nobody is asked for rates, as the setting ratesFrom says; fexora settings ratesFrom "
              "automatic changes that, and fexora refresh --from ecb asks once" +
                  end};
    case RatesProblem::Cause::unread:
      return {Exit::network, "source", problem.error.message + end};
    case RatesProblem::Cause::request:
      break;
  }
  return {Exit::network, kindOf(problem.error), problem.error.message + end};
}

// One at a time in this program, for as long as it runs.
FreshRates& freshRates() {
  static auto* const fresh = [] {
    auto* const made = new FreshRates(rateManager(), storeManager());
    made->setTaken([](const std::string& name, const auto& tables) { keepTables({name}, tables); });
    return made;
  }();
  return *fresh;
}

void refreshFromSetting(const StoreManager& store) {
  bool ended = false;
  std::optional<Failure> failure;
  Transfer::Progress received;
  freshRates().setProgress([&](const Transfer::Progress& now) { received = now; });
  startRefresh(store, [&](std::optional<Failure> problem) {
    failure = std::move(problem);
    ended = true;
  });
  const auto steps = freshRates().steps();
  waitFor(steps.empty() ? sources::SourceStep() : steps.front(), received, ended);
  freshRates().setProgress({});
  if (failure) throw Failure(*failure);
}

using Codes = std::set<std::string>;

void addCodes(Codes& codes, const std::vector<USDRateRef>& rates) {
  for (const USDRateRef& rate : rates) {
    if (currencyManager().hasCurrency(rate->code())) codes.insert(rate->code());
  }
}

// The codes that came.
Codes refreshFrom(const std::vector<std::string>& sources, const StoreManager& store) {
  std::vector<RatesTable> tables;
  try {
    tables = tablesFromSources(sources);
  } catch (Failure& failure) {
    if (failure.exit == Exit::network) failure.message += whatStays(store);
    throw;
  }
  Codes came;
  for (const RatesTable& table : tables) addCodes(came, table.rates);
  if (const auto error = rateManager().takeTables(tables, true)) {
    throw failureOf(store, {RatesProblem::Cause::refused, *error});
  }
  keepTables(sources, tables);
  for (const RatesReason& reason : rateManager().verdict().leftOut) came.erase(reason.code);
  return came;
}

// What a person may want to know of the rates that were taken.
void tellNotices() {
  constexpr std::size_t kMost = 5;
  const AnswerVerdict& verdict = rateManager().verdict();
  std::size_t left = kMost;
  const auto tell = [&](const std::vector<RatesReason>& reasons, const char* end) {
    for (const RatesReason& reason : reasons) {
      if (left == 0) return;
      --left;
      printMessage(reason.sentence() + end);
    }
  };
  tell(verdict.leftOut, ": left out, its older rate stays until another day says the same");
  tell(verdict.notices, "");
  const std::size_t all = verdict.leftOut.size() + verdict.notices.size();
  if (all > kMost) printMessage("and " + std::to_string(all - kMost) + " more");
}

}  // namespace

std::size_t countOfRates(const StoreManager& store) {
  Codes codes;
  if (const auto rates = store.loadUSDRates()) addCodes(codes, *rates);
  for (const RatesTable& table : keptTables(store.ud())) addCodes(codes, table.rates);
  return codes.size();
}

namespace {

void printRefresh(const CommandLine& line, const StoreManager& store, std::size_t came) {
  const std::string& message = rateManager().serviceMessage();
  const Freshness fresh = rateManager().freshness();
  if (line.json) {
    // An answer without rates leaves none that would be fresh.
    const bool isOfFile = fresh.origin == Freshness::Origin::file;
    JsonText json;
    json.beginObject().key("origin").string(isOfFile ? "file" : "service");
    json.key("count").integer(static_cast<std::int64_t>(came));
    json.key("message").string(message);
    json.key("updated").stringOrNull(ratesDate().updated).endObject();
    return printLine(json.text());
  }
  const bool isNamed = !line.from.empty() || freshRates().steps().front().name != sources::kService;
  const std::string from = isNamed ? fresh.source : "the service";
  const std::size_t all = countOfRates(store);
  printLine(std::to_string(came) + " rates from " + from + ": " + ratesLine());
  if (all > came) printLine(std::to_string(all - came) + " more stay with their older day");
  if (!message.empty()) printLine("the service says: " + message);
}

}  // namespace

void startRefresh(const StoreManager& store, std::function<void(std::optional<Failure>)> done) {
  FreshRates& fresh = freshRates();
  fresh.start(fresh.steps(),
              [&store, done = std::move(done)](const std::optional<RatesProblem>& problem) {
                done(problem ? std::optional(failureOf(store, *problem)) : std::nullopt);
              });
}

void refresh(const CommandLine& line) {
  if (!line.operands.empty() && line.past.empty()) {
    throw usageFailure("refresh takes sources by an option, as in: fexora refresh --from ecb");
  }
  if (!line.from.empty() && !line.past.empty()) {
    throw usageFailure("--from and --history are two tasks: give one of them");
  }
  StoreManager& store = openStoreInFolder();
  if (!line.past.empty()) return importHistory(line, store);
  if (line.force) rateManager().setAnswerCheck({});
  Codes came;
  if (line.from.empty()) {
    refreshFromSetting(store);
    addCodes(came, store.loadUSDRates().value_or(std::vector<USDRateRef>()));
  } else {
    came = refreshFrom(line.from, store);
  }
  if (came.empty()) printMessage("warning: the answer holds no rates of known currencies");
  tellNotices();
  printRefresh(line, store, came.size());
  requireSaved(store);
}

}  // namespace fexora::program
