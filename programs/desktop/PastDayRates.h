// The rates of one past day, for the lines of a conversion.
//
// By the history's rules: the newest table at or before the day that has both currencies, seven
// days back at most. Asked on the history's thread; until it has answered nothing is known. Main
// thread.
#pragma once

#include <QObject>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "programs/desktop/HistoryThread.h"

namespace fexora::desktop {

class PastDayRates final : public QObject {
  Q_OBJECT

 public:
  explicit PastDayRates(HistoryThread& history, QObject* parent = nullptr);

  // Nothing: the newest rates count, and nothing is asked.
  const std::optional<Day>& day() const { return day_; }
  void setDay(std::optional<Day> day);
  // From that currency to each of those, from now on; again when it is the same but the day is
  // another one.
  void ask(const CurrencyRef& source, const std::vector<CurrencyRef>& destinations);

  bool isAnswered() const { return isAnswered_; }
  // Null where there is none; all of one currency.
  const PastRate* find(const Currency& destination) const;
  bool hasAny() const { return !rates_.empty(); }
  // The source and the day that most of them are of; nothing of that without any.
  const std::string& mainSource() const { return mainSource_; }
  const std::optional<Day>& mainDay() const { return mainDay_; }
  // What the history says against its answer: one line, or empty.
  const std::string& problem() const { return problem_; }

 signals:
  void changed();

 private:
  struct Answer {
    std::vector<std::optional<PastRate>> rates;
    std::string problem;
  };
  void send();
  void countMain();
  void take(const std::vector<std::string>& codes, const Answer& answer);

  HistoryThread& history_;
  std::optional<Day> day_;
  std::string source_;
  std::vector<std::string> codes_;
  int asked_ = 0;  // how often, so that what is late is known
  bool isAnswered_ = false;
  std::unordered_map<std::string, PastRate> rates_;
  std::string mainSource_;
  std::optional<Day> mainDay_;
  std::string problem_;
};

}  // namespace fexora::desktop
