#include "programs/desktop/TodayDelegate.h"

#include <QFontMetrics>

#include "programs/desktop/RowPainting.h"
#include "programs/desktop/TodayModel.h"

namespace fexora::desktop {
namespace {

constexpr double kText = 13.5;
constexpr double kGap = 12;

}  // namespace

void TodayDelegate::paintRow(RowPainting& row, const QModelIndex& index) const {
  using Side = RowPainting::Side;
  const Theme& theme = row.theme();
  const QFont font = fontOf(kText);
  const int width =
      row.figure(row.inner(), index.data(TodayModel::valueRole).toString(), font, theme.text);
  row.text(row.without(row.inner(), Side::end, width + sized(kGap)), Side::start,
           index.data(TodayModel::labelRole).toString(), font, theme.text);
}

}  // namespace fexora::desktop
