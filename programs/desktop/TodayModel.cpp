#include "programs/desktop/TodayModel.h"

#include <algorithm>

#include "programs/desktop/FreshnessText.h"
#include "programs/desktop/Languages.h"
#include "programs/desktop/QtText.h"
#include "programs/desktop/Trends.h"
#include "programs/shared/Selection.h"

namespace fexora::desktop {

TodayModel::TodayModel(const Desk& desk, QObject* parent)
    : QAbstractListModel(parent), desk_(desk) {
  reload();
}

int TodayModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

QVariant TodayModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const Currency& currency = currencyAt(index.row());
  switch (role) {
    case labelRole:
      return desk_.store.namingInWidget() == Naming::codes ? codeOf(currency) : nameOf(currency);
    case originRole:
    case Qt::ToolTipRole:
      return originText(index.row());
    case valueRole:
      return valueText(index.row());
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
      return tr("%1, %2").arg(nameOf(currency), valueText(index.row()));
    case Qt::AccessibleDescriptionRole: {
      const QString origin = originText(index.row());
      const QString trend = trendText(index.row());
      return origin.isEmpty() || trend.isEmpty() ? origin + trend : origin + " · " + trend;
    }
    case trendRole: {
      const auto* const trend = trendAt(index.row());
      return trend != nullptr ? Trends::shapeOf(*trend, isTurned()) : QVariant();
    }
    default:
      return {};
  }
}

void TodayModel::reload() {
  const StoreManager& store = desk_.store;
  const StoreSourceRef last = store.loadSourceCurrency();
  beginResetModel();
  source_ =
      last != nullptr && last->currency() != nullptr ? last->currency() : Currency::make("USD");
  amount_ = last != nullptr ? last->amount().doubleValue() : 1;
  if (showsRates()) {
    source_ = store.todayRelativeCurrency();
    amount_ = 1;
  }
  auto wanted = store.todayCurrencies().empty() ? store.loadCurrencies() : store.todayCurrencies();
  lines_ = program::linesOf(wanted, *source_);
  const auto most =
      static_cast<std::size_t>(std::max<std::int64_t>(store.numberOfCurrenciesInWidget(), 0));
  if (lines_.size() > most) lines_.resize(most);
  wanted.push_back(source_);
  desk_.rates.loadStoredRates(std::move(wanted));
  pairs_.emplace(desk_.rates, desk_.store);
  endResetModel();
  askTrends();
}

void TodayModel::setTrends(Trends& trends) {
  trends_ = &trends;
  connect(trends_, &Trends::changed, this, [this] {
    if (!lines_.empty()) emit dataChanged(index(0), index(rowCount() - 1));
  });
  askTrends();
}

void TodayModel::askTrends() {
  if (trends_ != nullptr && desk_.store.todayTrend()) trends_->ask(source_, lines_);
}

const std::vector<DayRate>* TodayModel::trendAt(int row) const {
  if (trends_ == nullptr || !desk_.store.todayTrend()) return nullptr;
  const auto& rates = trends_->of(currencyAt(row));
  return rates.empty() ? nullptr : &rates;
}

QString TodayModel::trendText(int row) const {
  const auto* const trend = trendAt(row);
  if (trend == nullptr) return {};
  const double change = trend->back().rate / trend->front().rate;
  return tr("in %1 days %2")
      .arg(languageLocale().toString(Trends::kDays),
           percentText(((isTurned() ? 1 / change : change) - 1) * 100));
}

void TodayModel::turn() {
  beginResetModel();
  isTurned_ = !isTurned_;
  endResetModel();
}

QString TodayModel::heading() const {
  const QString code = codeOf(*source_);
  if (isTurned()) return tr("in %1").arg(code);
  return leftToRight(exactText(amount_, desk_.store.seporate()) + ' ' + code);
}

bool TodayModel::showsRates() const {
  return desk_.store.todayConversionMode() == TodayConversionMode::rate;
}

std::optional<program::PairFinder::Found> TodayModel::rateAt(int row) const {
  return pairs_->find(source_, lines_[static_cast<std::size_t>(row)]);
}

QString TodayModel::originText(int row) const {
  const auto found = rateAt(row);
  if (!found || !found->of) return {};
  return inWords(*found->of, desk_.now(), languageLocale());
}

QString TodayModel::valueText(int row) const {
  const auto found = rateAt(row);
  if (!found) return QStringLiteral("–");
  const double rate = found->rate.rate().doubleValue();
  if (!showsRates()) return amountText(amount_ * rate, desk_.store);
  const NumberFormat format(desk_.store.fraction(), desk_.store.seporate());
  return toQt(format.rate(isTurned_ ? 1 / rate : rate));
}

}  // namespace fexora::desktop
