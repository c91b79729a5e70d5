// The currencies that a search finds, best first; with nothing searched for, the given ones and
// then the whole catalogue by code.
#pragma once

#include <QAbstractListModel>
#include <string>
#include <unordered_set>
#include <vector>

#include "programs/desktop/Desk.h"

namespace fexora::desktop {

class PickerModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role {
    codeRole = Qt::UserRole + 1,
    nameRole,    // and where it is used, or what became of it when it was withdrawn
    signRole,    // or empty
    tickedRole,  // a boolean
  };

  explicit PickerModel(const Desk& desk, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

  void setSearch(const QString& text);
  // What stands first while nothing is searched for.
  void setFirst(std::vector<CurrencyRef> first);

  CurrencyRef currencyAt(int row) const { return found_[static_cast<std::size_t>(row)]; }
  // Ticks a row, or takes its tick away. Ticks outlive searches.
  void toggle(int row);
  void setTicked(const std::vector<CurrencyRef>& currencies);
  // In the order in which they were ticked.
  const std::vector<CurrencyRef>& ticked() const { return ticked_; }

 private:
  std::vector<CurrencyRef> unsearched() const;
  bool isTicked(const Currency& currency) const;

  Desk desk_;
  std::vector<CurrencyRef> first_;
  std::vector<CurrencyRef> found_;
  std::vector<CurrencyRef> ticked_;
};

}  // namespace fexora::desktop
