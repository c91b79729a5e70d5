#include "programs/desktop/Trends.h"

#include <QTimer>
#include <algorithm>
#include <chrono>
#include <utility>

#include "programs/shared/Currencies.h"

namespace fexora::desktop {
namespace {

// The process that takes rates keeps them for later a moment after they are in the store.
constexpr auto kMoment = std::chrono::seconds(3);

}  // namespace

Trends::Trends(const Desk& desk, HistoryThread& history, QObject* parent)
    : QObject(parent), desk_(desk), history_(history) {}

void Trends::ask(const CurrencyRef& source, const std::vector<CurrencyRef>& destinations) {
  std::vector<std::string> codes = program::codesOf(destinations);
  const auto stored = desk_.rates.freshness().stored;
  if (source->code() == source_ && codes == codes_ && stored == stored_) return;
  const bool areRatesOthers = !source_.empty() && stored != stored_;
  source_ = source->code();
  codes_ = std::move(codes);
  stored_ = stored;
  send();
  if (areRatesOthers) QTimer::singleShot(kMoment, this, &Trends::send);
}

void Trends::send() {
  const Day today = dayOfMoment(desk_.now().secondsSince1970());
  const auto work = [source = source_, codes = codes_, today](RateHistory& history) {
    // Back from the last day that is known, as the converter's picture does.
    constexpr std::chrono::days kBack{366};
    Rates all;
    for (const std::string& code : codes) {
      auto rates = history.between(today - kBack, today + std::chrono::days(1), source, code, {});
      if (rates.empty()) continue;
      const Day first = rates.back().day - std::chrono::days(kDays);
      std::erase_if(rates, [first](const DayRate& rate) { return rate.day < first; });
      all.emplace(code, std::move(rates));
    }
    return all;
  };
  history_.ask(this, work, [this, source = source_, codes = codes_](Rates& all) {
    if (source != source_ || codes != codes_) return;
    rates_ = std::move(all);
    emit changed();
  });
}

const std::vector<DayRate>& Trends::of(const Currency& destination) const {
  static const std::vector<DayRate> kNone;
  const auto found = rates_.find(destination.code());
  return found != rates_.end() && found->second.size() > 1 ? found->second : kNone;
}

QPolygonF Trends::shapeOf(const std::vector<DayRate>& rates, bool isTurned) {
  QPolygonF shape;
  if (rates.size() < 2) return shape;
  const auto less = [](const DayRate& a, const DayRate& b) { return a.rate < b.rate; };
  const auto [low, high] = std::minmax_element(rates.begin(), rates.end(), less);
  const double range = high->rate - low->rate;
  const auto days = static_cast<double>((rates.back().day - rates.front().day).count());
  for (const DayRate& rate : rates) {
    const double up = range > 0 ? (rate.rate - low->rate) / range : 0.5;
    shape << QPointF(static_cast<double>((rate.day - rates.front().day).count()) / days,
                     isTurned ? 1 - up : up);
  }
  return shape;
}

}  // namespace fexora::desktop
