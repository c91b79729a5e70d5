#include "programs/desktop/TodayDelegate.h"

#include <QFontMetrics>
#include <algorithm>

#include "programs/desktop/RowPainting.h"
#include "programs/desktop/TodayModel.h"

namespace fexora::desktop {
namespace {

constexpr double kText = 13.5;
constexpr double kTrendWidth = 42;
constexpr double kTrendHeight = 16;

// Of the amounts of the lines that are seen at once.
int widest(const QAbstractItemModel& lines, const QFont& font) {
  constexpr int kSeen = 30;
  const QFontMetrics metrics(font);
  int width = 0;
  for (int row = 0; row < std::min(lines.rowCount(), kSeen); ++row) {
    const QString value = lines.index(row, 0).data(TodayModel::valueRole).toString();
    width = std::max(width, metrics.horizontalAdvance(value));
  }
  return width;
}

}  // namespace

void TodayDelegate::paintRow(RowPainting& row, const QModelIndex& index) const {
  using Side = RowPainting::Side;
  const Theme& theme = row.theme();
  const QFont font = fontOf(kText);
  const QString origin = index.data(TodayModel::originRole).toString();
  const int width = row.figure(row.inner(), index.data(TodayModel::valueRole).toString(), font,
                               origin.isEmpty() ? theme.text : theme.warning);
  QRect start = row.without(row.inner(), Side::end, width + sized(kColumnGap));
  const QVariant trend = index.data(TodayModel::trendRole);
  if (trend.isValid()) {
    // One below the other, beside the widest amount.
    const QRect beside =
        row.without(row.inner(), Side::end, widest(*index.model(), font) + sized(kColumnGap));
    start = row.without(beside, Side::end, sized(kTrendWidth + kColumnGap));
    QRect area(0, 0, sized(kTrendWidth), sized(kTrendHeight));
    const bool mirrored = row.option().direction == Qt::RightToLeft;
    area.moveCenter(beside.center());
    mirrored ? area.moveLeft(beside.left()) : area.moveRight(beside.right());
    row.sparkline(area, trend.value<QPolygonF>());
  }
  const QString label = index.data(TodayModel::labelRole).toString();
  const QString dated = label + " · " + origin;
  // Where the day has no room the colour says that it is another one, and the tooltip which.
  const bool hasRoom =
      !origin.isEmpty() && QFontMetrics(font).horizontalAdvance(dated) <= start.width();
  row.text(start, Side::start, hasRoom ? dated : label, font, theme.text);
}

}  // namespace fexora::desktop
