// The lines of a conversion as a list: the person's selection in its order, without the source.
//
// A line is worked out when it is asked for, so that a key costs what is seen, whatever the number
// of currencies. What changes the selection is saved at once; amount and source are recorded in the
// store, and saved together a second after the last change (startSyncTimer): but for what is shown
// by the rates of a past day, which is nobody's last amount. Main thread.
#pragma once

#include <QAbstractListModel>
#include <optional>
#include <vector>

#include "programs/desktop/Desk.h"
#include "programs/shared/PairFinder.h"

namespace fexora::desktop {

class PastDayRates;

class LinesModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role {
    codeRole = Qt::UserRole + 1,  // "EUR"
    nameRole,                     // "Euro", with what became of it when it was withdrawn
    amountRole,                   // "88.023", or "–" without an amount or a rate
    rateRole,                     // "1 USD = 0.880226 EUR", or what is wrong with the line
    originRole,                   // "rate of 29 September, bundled" when it is of another day, or
                                  // source, than the rest; or empty
    numberRole,                   // "88.0226": the amount for a paste, unrounded; empty without one
  };

  explicit LinesModel(const Desk& desk, QObject* parent = nullptr);

  // While these have a day its rates count. They outlive it.
  void setPast(PastDayRates& past);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
  bool moveRows(const QModelIndex& from, int row, int count, const QModelIndex& to,
                int before) override;

  // Takes selection and rates from the store anew; rows that stay the same stay selected.
  void reload();

  const CurrencyRef& source() const { return source_; }
  // A source from outside of the selection becomes one of its lines when another takes its place.
  void setSource(const CurrencyRef& currency);
  // Nothing: no amount to convert.
  void setAmount(std::optional<double> amount);
  // Amount and source into the store, which saves them a second after the last call.
  void record();
  // The same, saved at once.
  void keep();

  // Those that are new, at the end.
  void add(const std::vector<CurrencyRef>& currencies);
  void remove(int row);
  // Brings the last removed one back, to its place. False when there is none.
  bool restore();

  CurrencyRef currencyAt(int row) const;
  // Nothing without an amount or a rate, and where the result is beyond the doubles.
  std::optional<double> valueAt(int row) const;
  const std::vector<CurrencyRef>& selection() const { return selection_; }
  // "88.023 EUR"
  QString lineText(int row) const;
  // Every line, code and number parted by a tab, for a spreadsheet.
  QString tableText() const;

 private:
  bool isPast() const;
  const PastRate* pastAt(int row) const;
  // "rate of 17 September", and ", European Central Bank" after it.
  QString dayText(const PastRate& rate) const;
  QString pastText(const PastRate& rate) const;
  QString wholeText(int row) const;
  std::optional<program::PairFinder::Found> rateAt(int row) const;
  std::optional<double> resultAt(int row) const;
  QString rateText(int row) const;
  QString originText(int row) const;
  QString nameText(int row) const;
  void loadRates();
  void arrange();
  void saveSelection();

  Desk desk_;
  std::vector<CurrencyRef> selection_;
  std::vector<CurrencyRef> rows_;
  CurrencyRef source_;
  std::optional<double> amount_;
  std::optional<program::PairFinder> pairs_{std::in_place, desk_.rates, desk_.store};
  PastDayRates* past_ = nullptr;
  std::optional<std::pair<std::size_t, CurrencyRef>> removed_;
};

}  // namespace fexora::desktop
