#include "programs/desktop/PastDayRates.h"

#include <algorithm>
#include <map>
#include <utility>

#include "programs/shared/Currencies.h"

namespace fexora::desktop {

PastDayRates::PastDayRates(HistoryThread& history, QObject* parent)
    : QObject(parent), history_(history) {
  connect(&history, &HistoryThread::changed, this, &PastDayRates::send);
}

void PastDayRates::setDay(std::optional<Day> day) {
  if (day == day_) return;
  day_ = day;
  rates_.clear();
  countMain();
  isAnswered_ = false;
  send();
  emit changed();
}

void PastDayRates::ask(const CurrencyRef& source, const std::vector<CurrencyRef>& destinations) {
  std::vector<std::string> codes = program::codesOf(destinations);
  if (source->code() == source_ && codes == codes_) return;
  if (source->code() != source_) rates_.clear();
  source_ = source->code();
  codes_ = std::move(codes);
  send();
}

void PastDayRates::send() {
  ++asked_;
  if (!day_ || codes_.empty()) return;
  const auto work = [day = *day_, source = source_, codes = codes_](RateHistory& history) {
    Answer answer;
    answer.rates = history.on(day, source, codes, {});
    answer.problem = history.problem();
    return answer;
  };
  history_.ask(this, work, [this, asked = asked_, codes = codes_](const Answer& answer) {
    if (asked == asked_) take(codes, answer);
  });
}

void PastDayRates::take(const std::vector<std::string>& codes, const Answer& answer) {
  rates_.clear();
  for (std::size_t i = 0; i < codes.size() && i < answer.rates.size(); ++i) {
    if (answer.rates[i]) rates_.emplace(codes[i], *answer.rates[i]);
  }
  countMain();
  problem_ = answer.problem;
  isAnswered_ = true;
  emit changed();
}

const PastRate* PastDayRates::find(const Currency& destination) const {
  const auto found = rates_.find(destination.code());
  return found != rates_.end() ? &found->second : nullptr;
}

void PastDayRates::countMain() {
  std::map<std::pair<Day, std::string>, int> counts;
  for (const auto& [code, rate] : rates_) ++counts[{rate.day, rate.source}];
  const auto most =
      std::max_element(counts.begin(), counts.end(),
                       [](const auto& a, const auto& b) { return a.second < b.second; });
  const bool hasAny = most != counts.end();
  mainDay_ = hasAny ? std::optional(most->first.first) : std::nullopt;
  mainSource_ = hasAny ? most->first.second : std::string();
}

}  // namespace fexora::desktop
