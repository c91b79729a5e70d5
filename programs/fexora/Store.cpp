#include "programs/fexora/Store.h"

#include <array>
#include <cmath>
#include <cstdint>

#include "programs/fexora/Failure.h"
#include "programs/fexora/Output.h"

namespace fexora::program {
namespace {

struct Unit {
  double seconds;
  const char* name;
};

constexpr std::array<Unit, 3> kUnits = {{{86400, "day"}, {3600, "hour"}, {60, "minute"}}};

std::string ageText(double seconds) {
  for (const Unit& unit : kUnits) {
    if (seconds < unit.seconds) continue;
    const auto count = static_cast<std::int64_t>(seconds / unit.seconds);
    return std::to_string(count) + " " + unit.name + (count == 1 ? "" : "s") + " old";
  }
  return seconds < 0 ? "dated in the future" : "less than a minute old";
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
  return {updated->isoText(), now - updated->secondsSince1970()};
}

void addRatesDate(JsonText& json, const RatesDate& date) {
  json.key("updated").stringOrNull(date.updated);
  json.key("age_seconds").numberOrNull(date.ageSeconds);
}

std::string ratesLine(const RatesDate& date) {
  if (!date.updated || !date.ageSeconds) return "rates of an unknown date";
  return "rates of " + date.updated->substr(0, 10) + ", " + ageText(*date.ageSeconds);
}

}  // namespace fexora::program
