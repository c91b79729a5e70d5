#include "programs/desktop/PickerModel.h"

#include <algorithm>

#include "programs/desktop/QtText.h"

namespace fexora::desktop {
namespace {

// What became of it, else where it is used.
QString nameAndMore(const Currency& currency) {
  const QString remark = remarkOf(currency);
  const QString more = remark.isEmpty() ? placesOf(currency) : remark;
  return more.isEmpty() ? nameOf(currency) : nameOf(currency) + " · " + more;
}

}  // namespace

PickerModel::PickerModel(const Desk& desk, QObject* parent)
    : QAbstractListModel(parent), desk_(desk) {
  setSearch({});
}

int PickerModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(found_.size());
}

QVariant PickerModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const Currency& currency = *currencyAt(index.row());
  switch (role) {
    case codeRole:
    case Qt::DisplayRole:
      return codeOf(currency);
    case nameRole:
      return nameAndMore(currency);
    case signRole:
      return signOf(currency);
    case tickedRole:
      return isTicked(currency);
    case Qt::AccessibleTextRole: {
      const QString text = codeOf(currency) + ", " + data(index, nameRole).toString();
      return isTicked(currency) ? tr("%1, ticked").arg(text) : text;
    }
    default:
      return {};
  }
}

void PickerModel::setSearch(const QString& text) {
  const std::string wanted = text.trimmed().toStdString();
  constexpr std::int64_t kAll = 10'000;
  beginResetModel();
  found_ = wanted.empty() ? unsearched() : desk_.catalogue.rankedCurrencies(wanted, kAll);
  endResetModel();
}

void PickerModel::setFirst(std::vector<CurrencyRef> first) {
  first_ = std::move(first);
  setSearch({});
}

void PickerModel::toggle(int row) {
  const CurrencyRef currency = currencyAt(row);
  const auto same = [&](const CurrencyRef& each) { return each->code() == currency->code(); };
  if (std::erase_if(ticked_, same) == 0) ticked_.push_back(currency);
  emit dataChanged(index(row), index(row));
}

void PickerModel::setTicked(const std::vector<CurrencyRef>& currencies) {
  ticked_ = currencies;
  if (!found_.empty()) emit dataChanged(index(0), index(rowCount() - 1));
}

std::vector<CurrencyRef> PickerModel::unsearched() const {
  std::vector<CurrencyRef> list = first_;
  std::unordered_set<std::string> seen;
  for (const CurrencyRef& each : first_) seen.insert(each->code());
  auto others = desk_.catalogue.currencies();
  std::sort(others.begin(), others.end(),
            [](const CurrencyRef& a, const CurrencyRef& b) { return a->code() < b->code(); });
  for (const CurrencyRef& each : others) {
    if (seen.insert(each->code()).second) list.push_back(each);
  }
  return list;
}

bool PickerModel::isTicked(const Currency& currency) const {
  return std::any_of(ticked_.begin(), ticked_.end(),
                     [&](const CurrencyRef& each) { return each->code() == currency.code(); });
}

}  // namespace fexora::desktop
