// How rates moved in the last thirty days that are known, for small pictures: asked of the history
// on its thread. Main thread.
#pragma once

#include <QObject>
#include <QPolygonF>
#include <string>
#include <unordered_map>
#include <vector>

#include "programs/desktop/HistoryThread.h"

namespace fexora::desktop {

class Trends final : public QObject {
  Q_OBJECT

 public:
  static constexpr int kDays = 30;

  Trends(const Desk& desk, HistoryThread& history, QObject* parent = nullptr);

  // From that currency to each of those, and again when the rates of the store are others.
  void ask(const CurrencyRef& source, const std::vector<CurrencyRef>& destinations);
  // Oldest first; empty where fewer than two days are known.
  const std::vector<DayRate>& of(const Currency& destination) const;

  // Both sides from 0 to 1, days to the right and rates upwards; of rates turned around with
  // `isTurned`. Empty for fewer than two.
  static QPolygonF shapeOf(const std::vector<DayRate>& rates, bool isTurned);

 signals:
  void changed();

 private:
  using Rates = std::unordered_map<std::string, std::vector<DayRate>>;
  void send();

  Desk desk_;
  HistoryThread& history_;
  std::string source_;
  std::vector<std::string> codes_;
  std::optional<Date> stored_;
  Rates rates_;
};

}  // namespace fexora::desktop
