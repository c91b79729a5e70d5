#include "programs/desktop/TodayDelegate.h"

#include <QFontMetrics>

#include "programs/desktop/RowPainting.h"
#include "programs/desktop/TodayModel.h"

namespace fexora::desktop {
namespace {

constexpr double kText = 13.5;

}  // namespace

void TodayDelegate::paintRow(RowPainting& row, const QModelIndex& index) const {
  using Side = RowPainting::Side;
  const Theme& theme = row.theme();
  const QFont font = fontOf(kText);
  const QString origin = index.data(TodayModel::originRole).toString();
  const int width = row.figure(row.inner(), index.data(TodayModel::valueRole).toString(), font,
                               origin.isEmpty() ? theme.text : theme.warning);
  const QRect start = row.without(row.inner(), Side::end, width + sized(kColumnGap));
  const QString label = index.data(TodayModel::labelRole).toString();
  const QString dated = label + " · " + origin;
  // Where the day has no room the colour says that it is another one, and the tooltip which.
  const bool hasRoom =
      !origin.isEmpty() && QFontMetrics(font).horizontalAdvance(dated) <= start.width();
  row.text(start, Side::start, hasRoom ? dated : label, font, theme.text);
}

}  // namespace fexora::desktop
