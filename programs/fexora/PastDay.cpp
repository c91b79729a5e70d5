#include "programs/fexora/PastDay.h"

#include <algorithm>
#include <array>

#include "programs/shared/Failure.h"
#include "programs/shared/RatesText.h"
#include "programs/sources/TakenTables.h"

namespace fexora::program {
namespace {

Date dateOf(Day day) {
  return Date(static_cast<double>(std::chrono::sys_seconds(day).time_since_epoch().count()));
}

// What has begun somewhere on earth is no day to come.
void requirePast(std::string_view option, Day day) {
  if (day <= today() + std::chrono::days(1)) return;
  throw usageFailure(std::string(option) + ": " + isoText(day) + " is yet to come");
}

}  // namespace

Day today() {
  return dayOfMoment(Platform::process().loop->wallSeconds());
}

Day dayFromText(std::string_view option, std::string_view typed) {
  if (typed == "today") return today();
  if (typed == "yesterday") return today() - std::chrono::days(1);
  const auto day = dayFromIsoText(typed);
  if (!day) {
    throw usageFailure(std::string(option) + " takes a day like 2024-03-01, not \"" +
                       std::string(typed.substr(0, 40)) + "\"");
  }
  requirePast(option, *day);
  return *day;
}

PastQuestion pastQuestionOf(const CommandLine& line) {
  PastQuestion question;
  for (const std::string& source : line.sources)
    question.sources.push_back(sources::nameInHistory(source));
  if (line.atMost) question.atMostBefore = static_cast<int>(*line.atMost);
  return question;
}

std::optional<PastDay> pastDayOf(const CommandLine& line) {
  if (line.on.empty() && line.before.empty()) return std::nullopt;
  if (!line.on.empty()) return pastDayOf(line, dayFromText("--on", line.on));
  PastDay past = pastDayOf(line, dayFromText("--before", line.before));
  past.day -= std::chrono::days(1);
  return past;
}

PastDay pastDayOf(const CommandLine& line, Day day) {
  requirePast("a day", day);
  return {day, day, pastQuestionOf(line)};
}

RateHistory& history(StoreManager& store) {
  static RateHistory* const rates =
      rateHistory(store.applicationDocumentsDirectory(), *Platform::process().files,
                  *Platform::process().log)
          .release();
  return *rates;
}

std::string shownDay(Day day) {
  return dayText(dateOf(day));
}

std::string weekdayText(Day day) {
  constexpr std::array kWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                    "Thursday", "Friday", "Saturday"};
  return std::string(kWeekdays.at(std::chrono::weekday(day).c_encoding())) + " " + shownDay(day);
}

std::string whatIsKept(RateHistory& rates, Day last) {
  const HistorySummary kept = rates.summary();
  if (!kept.problem.empty()) return "; " + kept.problem;
  if (kept.sources.empty()) {
    return "; there is no history yet: fexora refresh --history ecb brings one";
  }
  Day first = kept.sources.front().first;
  for (const HistorySummary::Line& line : kept.sources) first = std::min(first, line.first);
  // It may have gaps, or lack the source or a currency.
  const std::string rest = last < first ? "" : ", and fexora history tells what it has";
  return "; the history begins on " + shownDay(first) + rest;
}

}  // namespace fexora::program
