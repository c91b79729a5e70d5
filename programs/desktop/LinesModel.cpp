#include "programs/desktop/LinesModel.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "programs/desktop/FreshnessText.h"
#include "programs/desktop/Languages.h"
#include "programs/desktop/PastDayRates.h"
#include "programs/desktop/QtText.h"
#include "programs/desktop/SourceText.h"
#include "programs/shared/Selection.h"

namespace fexora::desktop {
namespace {

auto placeOf(const std::vector<CurrencyRef>& list, const Currency& currency) {
  return std::find_if(list.begin(), list.end(),
                      [&](const CurrencyRef& each) { return each->code() == currency.code(); });
}

bool contains(const std::vector<CurrencyRef>& list, const Currency& currency) {
  return placeOf(list, currency) != list.end();
}

}  // namespace

LinesModel::LinesModel(const Desk& desk, QObject* parent)
    : QAbstractListModel(parent), desk_(desk), source_(desk.catalogue.currencyForCode("USD")) {
  if (source_ == nullptr) source_ = Currency::make("USD");
  reload();
}

int LinesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant LinesModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const int row = index.row();
  switch (role) {
    case codeRole:
      return codeOf(*currencyAt(row));
    case nameRole:
      return nameText(row);
    case amountRole: {
      const auto value = resultAt(row);
      return value ? amountText(*value, desk_.store) : QStringLiteral("–");
    }
    case rateRole:
      return rateText(row);
    case originRole:
      return originText(row);
    case numberRole: {
      const auto value = valueAt(row);
      return value ? plainNumber(*value) : QString();
    }
    case Qt::DisplayRole:
      return lineText(row);
    case Qt::AccessibleTextRole:
      return tr("%1, %2").arg(nameOf(*currencyAt(row)), data(index, amountRole).toString());
    case Qt::AccessibleDescriptionRole:
      return wholeText(row);
    case Qt::ToolTipRole: {
      const QString whole = wholeText(row);
      return whole == rateText(row) ? QVariant() : whole;
    }
    default:
      return {};
  }
}

Qt::ItemFlags LinesModel::flags(const QModelIndex& index) const {
  // Lines are dropped between lines, never on one.
  if (!index.isValid()) return Qt::ItemIsDropEnabled;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled |
         Qt::ItemNeverHasChildren;
}

bool LinesModel::moveRows(const QModelIndex& from, int row, int count, const QModelIndex& to,
                          int before) {
  if (count != 1 || row < 0 || row >= rowCount() || before < 0 || before > rowCount()) return false;
  if (!beginMoveRows(from, row, row, to, before)) return false;
  const CurrencyRef moved = currencyAt(row);
  const CurrencyRef follower = before < rowCount() ? currencyAt(before) : nullptr;
  selection_.erase(placeOf(selection_, *moved));
  selection_.insert(follower != nullptr ? placeOf(selection_, *follower) : selection_.end(), moved);
  rows_ = program::linesOf(selection_, *source_);
  endMoveRows();
  saveSelection();
  return true;
}

void LinesModel::setPast(PastDayRates& past) {
  past_ = &past;
  past.ask(source_, rows_);
  connect(past_, &PastDayRates::changed, this, &LinesModel::arrange);
}

bool LinesModel::isPast() const {
  return past_ != nullptr && past_->day().has_value();
}

void LinesModel::reload() {
  selection_ = program::withoutDoubles(desk_.store.loadCurrencies());
  loadRates();
  arrange();
}

void LinesModel::setSource(const CurrencyRef& currency) {
  if (currency == nullptr || currency->code() == source_->code()) return;
  const auto place = placeOf(selection_, *currency);
  // What was converted from stays in sight.
  if (place != selection_.end() && !contains(selection_, *source_)) {
    selection_.insert(place, source_);
    saveSelection();
  }
  source_ = currency;
  loadRates();
  arrange();
}

void LinesModel::setAmount(std::optional<double> amount) {
  amount_ = amount;
  if (!rows_.empty()) emit dataChanged(index(0), index(rowCount() - 1));
}

void LinesModel::record() {
  if (!amount_ || isPast()) return;
  desk_.store.saveSourceCurrency(source_, *amount_, false);
  desk_.store.startSyncTimer();
}

void LinesModel::keep() {
  if (const auto& later = desk_.store.syncTimer()) later->invalidate();
  if (amount_ && !isPast()) desk_.store.saveSourceCurrency(source_, *amount_, false);
  desk_.store.synchronize();
}

void LinesModel::add(const std::vector<CurrencyRef>& currencies) {
  const std::size_t before = selection_.size();
  for (const CurrencyRef& each : currencies) {
    if (!contains(selection_, *each)) selection_.push_back(each);
  }
  if (selection_.size() == before) return;
  saveSelection();
  loadRates();
  arrange();
}

void LinesModel::remove(int row) {
  if (row < 0 || row >= rowCount()) return;
  const auto place = placeOf(selection_, *currencyAt(row));
  removed_ = {static_cast<std::size_t>(place - selection_.begin()), *place};
  beginRemoveRows({}, row, row);
  selection_.erase(place);
  rows_ = program::linesOf(selection_, *source_);
  endRemoveRows();
  saveSelection();
}

bool LinesModel::restore() {
  if (!removed_) return false;
  const auto [place, currency] = *std::exchange(removed_, std::nullopt);
  if (contains(selection_, *currency)) return false;
  const auto at = std::min(place, selection_.size());
  selection_.insert(selection_.begin() + static_cast<std::ptrdiff_t>(at), currency);
  saveSelection();
  loadRates();
  arrange();
  return true;
}

CurrencyRef LinesModel::currencyAt(int row) const {
  return rows_[static_cast<std::size_t>(row)];
}

std::optional<double> LinesModel::valueAt(int row) const {
  const auto result = resultAt(row);
  return result && std::isfinite(*result) ? result : std::nullopt;
}

std::optional<double> LinesModel::resultAt(int row) const {
  const auto found = rateAt(row);
  if (!found || !amount_) return std::nullopt;
  return ConvertedItem(found->rate, *amount_, false).dstAmount.doubleValue();
}

QString LinesModel::lineText(int row) const {
  return leftToRight(data(index(row), amountRole).toString() + ' ' + codeOf(*currencyAt(row)));
}

QString LinesModel::tableText() const {
  QString text;
  for (int row = 0; row < rowCount(); ++row) {
    text += codeOf(*currencyAt(row)) + '\t' + data(index(row), numberRole).toString() + '\n';
  }
  return text;
}

std::optional<program::PairFinder::Found> LinesModel::rateAt(int row) const {
  if (!isPast()) return pairs_->find(source_, currencyAt(row));
  const PastRate* const past = pastAt(row);
  if (past == nullptr) return std::nullopt;
  return program::PairFinder::Found{Rate(source_, currencyAt(row), past->rate), std::nullopt};
}

const PastRate* LinesModel::pastAt(int row) const {
  return past_->find(*currencyAt(row));
}

QString LinesModel::rateText(int row) const {
  const auto found = rateAt(row);
  if (!found && isPast()) return past_->isAnswered() ? tr("no rate for that day") : QString();
  if (!found) return tr("no rate");
  if (!std::isfinite(resultAt(row).value_or(0))) return tr("too large a number");
  const NumberFormat format(desk_.store.fraction(), desk_.store.seporate());
  return leftToRight(QStringLiteral("1 %1 = %2 %3")
                         .arg(codeOf(*source_), toQt(format.rate(found->rate.rate().doubleValue())),
                              codeOf(*currencyAt(row))));
}

QString LinesModel::originText(int row) const {
  if (isPast()) {
    const PastRate* const past = pastAt(row);
    if (past == nullptr) return {};
    if (past->source != past_->mainSource()) return pastText(*past);
    return past->day != past_->mainDay() ? dayText(*past) : QString();
  }
  const auto found = rateAt(row);
  if (!found || !found->of) return {};
  return inWords(*found->of, desk_.now(), languageLocale());
}

QString LinesModel::dayText(const PastRate& rate) const {
  return tr("rate of %1").arg(inWords(rate.day, desk_.now(), languageLocale()));
}

QString LinesModel::pastText(const PastRate& rate) const {
  return tr("%1, %2", "a rate's day, a source").arg(dayText(rate), sourceInWords(rate.source));
}

// Of a past rate nothing is left to guess.
QString LinesModel::wholeText(int row) const {
  const PastRate* const past = isPast() ? pastAt(row) : nullptr;
  if (past == nullptr) {
    const QString origin = originText(row);
    return origin.isEmpty() ? rateText(row) : rateText(row) + " · " + origin;
  }
  const QString how = past->how == PastRate::How::printed   ? tr("as printed")
                      : past->how == PastRate::How::crossed ? tr("from two printed ones")
                                                            : tr("by a fixed ratio");
  return rateText(row) + " · " + pastText(*past) + " · " + how;
}

QString LinesModel::nameText(int row) const {
  const CurrencyRef currency = currencyAt(row);
  const QString remark = remarkOf(*currency);
  return remark.isEmpty() ? nameOf(*currency) : nameOf(*currency) + " · " + remark;
}

void LinesModel::loadRates() {
  auto wanted = selection_;
  wanted.push_back(source_);
  desk_.rates.loadStoredRates(std::move(wanted));
  pairs_.emplace(desk_.rates, desk_.store);
}

// Not a reset, so that the view keeps what is selected.
void LinesModel::arrange() {
  auto lines = program::linesOf(selection_, *source_);
  if (past_ != nullptr) past_->ask(source_, lines);
  if (lines == rows_) {
    if (!rows_.empty()) emit dataChanged(index(0), index(rowCount() - 1));
    return;
  }
  emit layoutAboutToBeChanged();
  std::unordered_map<std::string, int> rows;
  for (const CurrencyRef& line : lines) rows.emplace(line->code(), static_cast<int>(rows.size()));
  for (const QModelIndex& each : persistentIndexList()) {
    const auto found = rows.find(currencyAt(each.row())->code());
    changePersistentIndex(each, found != rows.end() ? index(found->second) : QModelIndex());
  }
  rows_ = std::move(lines);
  emit layoutChanged();
}

void LinesModel::saveSelection() {
  desk_.store.saveCurrencies(selection_);
}

}  // namespace fexora::desktop
