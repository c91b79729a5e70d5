// The lines of the Today widget, by the store's five settings for it.
#pragma once

#include <QAbstractListModel>
#include <optional>
#include <vector>

#include "programs/desktop/Desk.h"
#include "programs/shared/PairFinder.h"

namespace fexora::desktop {

class Trends;

class TodayModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role {
    labelRole = Qt::UserRole + 1,  // the name or the code
    originRole,                    // as LinesModel's
    trendRole,                     // Trends' shape, when the setting says so and days are known
    valueRole,                     // what the heading's amount gives; "–" without a rate
  };

  explicit TodayModel(const Desk& desk, QObject* parent = nullptr);

  // Asked for what the setting wants drawn. They outlive it.
  void setTrends(Trends& trends);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

  // Takes everything from the store anew.
  void reload();
  // In the mode of rates: one unit of each currency in the heading's, and back again.
  void turn();

  // "100 USD", "1 EUR", or for the way back "in EUR".
  QString heading() const;
  bool showsRates() const;
  bool isTurned() const { return isTurned_ && showsRates(); }
  const Currency& source() const { return *source_; }
  const Currency& currencyAt(int row) const { return *lines_[static_cast<std::size_t>(row)]; }

 private:
  std::optional<program::PairFinder::Found> rateAt(int row) const;
  QString originText(int row) const;
  // "in 30 days +1.98 %", or empty
  QString trendText(int row) const;
  const std::vector<DayRate>* trendAt(int row) const;
  void askTrends();
  QString valueText(int row) const;

  Desk desk_;
  std::vector<CurrencyRef> lines_;
  CurrencyRef source_;
  double amount_ = 1;
  bool isTurned_ = false;
  std::optional<program::PairFinder> pairs_;
  Trends* trends_ = nullptr;
};

}  // namespace fexora::desktop
