#include "programs/fexora/Store.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include <unistd.h>

#include "programs/fexora/Failure.h"
#include "programs/fexora/Output.h"

namespace fexora::program {
namespace {

struct Unit {
  double seconds;
  const char* name;
};

constexpr std::array<Unit, 3> kUnits = {{{86400, "day"}, {3600, "hour"}, {60, "minute"}}};

// "3 hours"
std::string durationText(double seconds) {
  for (const Unit& unit : kUnits) {
    if (seconds < unit.seconds) continue;
    const auto count = static_cast<std::int64_t>(seconds / unit.seconds);
    return std::to_string(count) + " " + unit.name + (count == 1 ? "" : "s");
  }
  return "less than a minute";
}

double now() {
  return Platform::process().loop->wallSeconds();
}

// "3 hours old" and "3 hours ago"
std::string ageText(const Date& since, const char* word) {
  const double seconds = now() - since.secondsSince1970();
  return seconds < 0 ? "dated in the future" : durationText(seconds) + word;
}

const char* originText(Freshness::Origin origin) {
  switch (origin) {
    case Freshness::Origin::bundled:
      return ", bundled";
    case Freshness::Origin::service:
      return ", from the service";
    case Freshness::Origin::file:
      return ", from a file";
    case Freshness::Origin::none:
      break;
  }
  return "";
}

bool mayColour() {
  return isatty(STDOUT_FILENO) != 0 && std::getenv("NO_COLOR") == nullptr;
}

}  // namespace

std::string dayText(const Date& date) {
  constexpr std::array kMonths = {"January",   "February", "March",    "April",
                                  "May",       "June",     "July",     "August",
                                  "September", "October",  "November", "December"};
  const std::string text = date.isoText().value_or("");
  if (text.empty()) return "an unknown day";
  const auto month = static_cast<std::size_t>(std::stoi(text.substr(5, 2))) - 1;
  const std::string year = text.substr(0, 4);
  const std::string day = std::to_string(std::stoi(text.substr(8, 2)));
  const bool isThisYear = Date(now()).isoText().value_or("").starts_with(year);
  return day + " " + kMonths[month] + (isThisYear ? "" : " " + year);
}

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
  return {updated->isoText(), now - updated->secondsSince1970()};
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
  std::string line = "rates of ";
  if (fresh.published) {
    line += dayText(*fresh.published) + originText(fresh.origin) + ", " +
            ageText(*fresh.published, " old");
  } else if (fresh.stored) {
    line += "an unknown day, stored on " + dayText(*fresh.stored) + ", " +
            ageText(*fresh.stored, " ago");
  } else {
    line += "an unknown day";
  }
  return line + (fresh.state == Freshness::State::fresh ? "" : ": fexora refresh");
}

std::string shownRatesLine() {
  const bool isOld = rateManager().freshness().state == Freshness::State::old;
  return isOld && mayColour() ? "\x1b[33m" + ratesLine() + "\x1b[0m" : ratesLine();
}

}  // namespace fexora::program
