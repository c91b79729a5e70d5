#include "programs/desktop/LineDelegate.h"

#include <QFontMetrics>

#include "programs/desktop/LinesModel.h"
#include "programs/desktop/RowPainting.h"

namespace fexora::desktop {
namespace {

constexpr double kGap = 12;

}  // namespace

void LineDelegate::paintRow(RowPainting& row, const QModelIndex& index) const {
  using Side = RowPainting::Side;
  const Theme& theme = row.theme();
  const auto textOf = [&](LinesModel::Role role) { return index.data(role).toString(); };
  QRect upper = row.inner();
  upper.setBottom(upper.top() + upper.height() * 6 / 10);
  QRect lower = row.inner().adjusted(0, upper.height() - sized(3), 0, -sized(6));
  upper.setTop(upper.top() + sized(4));

  const QString amount = textOf(LinesModel::amountRole);
  const int codeWidth = row.text(upper, Side::start, textOf(LinesModel::codeRole),
                                 fontOf(15, QFont::DemiBold), theme.text);
  row.figure(row.without(upper, Side::start, codeWidth + sized(kGap)), amount, fontOf(19),
             theme.text);
  const QFont small = fontOf(12);
  const QRect end = row.without(lower, Side::start, lower.width() / 3);
  const QString origin = textOf(LinesModel::originRole);
  QString rate = textOf(LinesModel::rateRole);
  // Of another day than the rest is what matters more than the rate.
  if (!origin.isEmpty()) {
    rate += " · " + origin;
    if (QFontMetrics(small).horizontalAdvance(rate) > end.width()) rate = origin;
  }
  const int rateWidth =
      row.text(end, Side::end, rate, small, origin.isEmpty() ? theme.dim : theme.warning);
  row.text(row.without(lower, Side::end, rateWidth + sized(kGap)), Side::start,
           textOf(LinesModel::nameRole), small, theme.dim);
}

}  // namespace fexora::desktop
