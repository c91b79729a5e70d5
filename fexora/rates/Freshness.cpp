#include "fexora/rates/Freshness.h"

#include <algorithm>
#include <cmath>

#include "fexora/rates/BundledRates.h"

namespace fexora {
namespace {

constexpr double kOneDay = 86'400;
// 1970-01-01 was a Thursday.
constexpr double kMondayToEpoch = 3 * kOneDay;

// The seconds of weekdays since the Monday before 1970.
double weekdaySeconds(double secondsSince1970) {
  const double since = secondsSince1970 + kMondayToEpoch;
  const double weeks = std::floor(since / (7 * kOneDay));
  return weeks * 5 * kOneDay + std::min(since - weeks * 7 * kOneDay, 5 * kOneDay);
}

Freshness::State stateAt(const Date& since, const FreshnessPolicy& policy, const Date& now) {
  const double from = since.secondsSince1970();
  const double to = now.secondsSince1970();
  const double age = to - from;
  // Written so that an age that is not a number is old.
  if (!(age < policy.oldFrom)) return Freshness::State::old;
  if (age < -policy.futureGrace) return Freshness::State::stale;
  const double counted = policy.countsWeekends ? age : weekdaySeconds(to) - weekdaySeconds(from);
  return counted <= policy.freshFor ? Freshness::State::fresh : Freshness::State::stale;
}

std::optional<Date> storedDate(const StoreManager& store) {
  const Value* updated = store.ud().find(kUDUSDRatesUpdated);
  if (updated == nullptr || updated->date() == nullptr) return std::nullopt;
  return *updated->date();
}

}  // namespace

Freshness freshnessOf(const StoreManager& store, const FreshnessPolicy& policy, const Date& now) {
  Freshness found;
  found.stored = storedDate(store);
  if (!hasRates(store)) return found;
  if (auto answer = store.ratesAnswer()) {
    found.published = answer->published;
    found.source = std::move(answer->source);
    found.origin = answer->origin == RatesAnswer::Origin::file ? Freshness::Origin::file
                                                               : Freshness::Origin::service;
  } else if (hasBundledRates(store)) {
    found.published = found.stored;
    found.origin = Freshness::Origin::bundled;
  }
  const auto since = found.published ? found.published : found.stored;
  found.state = since ? stateAt(*since, policy, now) : Freshness::State::old;
  // An answer that does not tell its day may be older than it looks.
  const bool isUntold = found.origin != Freshness::Origin::none && !found.published;
  if (isUntold && found.state == Freshness::State::fresh) found.state = Freshness::State::stale;
  return found;
}

const char* text(Freshness::Origin origin) noexcept {
  switch (origin) {
    case Freshness::Origin::none:
      return "none";
    case Freshness::Origin::bundled:
      return "bundled";
    case Freshness::Origin::service:
      return "service";
    case Freshness::Origin::file:
      return "file";
  }
  return "none";
}

const char* text(Freshness::State state) noexcept {
  switch (state) {
    case Freshness::State::none:
      return "none";
    case Freshness::State::fresh:
      return "fresh";
    case Freshness::State::stale:
      return "stale";
    case Freshness::State::old:
      return "old";
  }
  return "none";
}

}  // namespace fexora
