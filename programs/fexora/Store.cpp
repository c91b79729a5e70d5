#include "programs/fexora/Store.h"

#include <cstdlib>

#include <unistd.h>

#include "programs/fexora/Output.h"
#include "programs/shared/Failure.h"
#include "programs/shared/RatesText.h"

namespace fexora::program {
namespace {

// Whether asking may bring newer rates: of a source whose newest are old it has just brought them.
bool wouldRefresh(const Freshness& fresh) {
  constexpr double kJustAsked = 3600;
  if (fresh.state == Freshness::State::fresh) return false;
  if (!fresh.stored || fresh.origin == Freshness::Origin::bundled) return true;
  const double age = Platform::process().loop->wallSeconds() - fresh.stored->secondsSince1970();
  return age < 0 || age >= kJustAsked;
}

bool mayColour() {
  return isatty(STDOUT_FILENO) != 0 && std::getenv("NO_COLOR") == nullptr;
}

}  // namespace

StoreManager& openStore(bool saves) {
  StoreManager& store = storeManager();
  store.setReconcilesAfterSkip(true);
  // Without a folder the command itself says so, unless it has nothing to write.
  const bool told = store.fileURL().empty() && saves;
  if (!store.loadProblem().empty() && !told) printMessage("warning: " + store.loadProblem());
  return store;
}

StoreManager& openStoreInFolder() {
  StoreManager& store = openStore();
  if (store.fileURL().empty()) throw Failure{Exit::notWritten, "store", store.loadProblem()};
  return store;
}

void requireSaved(StoreManager& store) {
  if (store.saveProblem().empty()) return;
  throw Failure{Exit::notWritten, "store", store.saveProblem()};
}

RatesDate ratesDate() {
  const auto updated = rateManager().updated();
  if (!updated) return {};
  const double now = Platform::process().loop->wallSeconds();
  const Date since = rateManager().freshness().published.value_or(*updated);
  return {updated->isoText(), now - since.secondsSince1970()};
}

void addRatesDate(JsonText& json, const RatesDate& date) {
  json.key("updated").stringOrNull(date.updated);
  json.key("age_seconds").numberOrNull(date.ageSeconds);
}

void addFreshness(JsonText& json) {
  const Freshness fresh = rateManager().freshness();
  const auto date = [&](const char* key, const std::optional<Date>& moment) {
    json.key(key).stringOrNull(moment ? moment->isoText() : std::nullopt);
  };
  json.key("rates").beginObject();
  date("published", fresh.published);
  date("stored", fresh.stored);
  json.key("source").string(fresh.source).key("origin").string(text(fresh.origin));
  json.key("state").string(text(fresh.state)).endObject();
}

std::string ratesLine() {
  const Freshness fresh = rateManager().freshness();
  if (fresh.state == Freshness::State::none) return "no rates: fexora refresh";
  return ratesText(fresh) + (wouldRefresh(fresh) ? ": fexora refresh" : "");
}

std::string shownRatesLine() {
  const bool isOld = rateManager().freshness().state == Freshness::State::old;
  return isOld && mayColour() ? "\x1b[33m" + ratesLine() + "\x1b[0m" : ratesLine();
}

}  // namespace fexora::program
