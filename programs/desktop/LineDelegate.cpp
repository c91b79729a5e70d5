#include "programs/desktop/LineDelegate.h"

#include <QApplication>
#include <QFontMetrics>

#include "programs/desktop/LinesModel.h"
#include "programs/desktop/RowPainting.h"

namespace fexora::desktop {
namespace {

constexpr double kSign = 26;  // as wide as it takes to be hit

QFont codeFont() {
  return fontOf(15, QFont::DemiBold);
}

}  // namespace

QSize LineDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const QSize closed = RowDelegate::sizeHint(option, index);
  return open_ == index ? closed + QSize(0, room_) : closed;
}

void LineDelegate::updateEditorGeometry(QWidget* panel, const QStyleOptionViewItem& option,
                                        const QModelIndex& /*index*/) const {
  panel->setGeometry(option.rect.adjusted(0, height(), 0, 0));
}

QRect LineDelegate::signOf(const QRect& line, const QModelIndex& index) const {
  const QString code = index.data(LinesModel::codeRole).toString();
  const int start = sized(kRowMargin) + QFontMetrics(codeFont()).horizontalAdvance(code);
  const QRect sign(line.left() + start, line.top(), sized(kSign), height() * 6 / 10);
  return QStyle::visualRect(QApplication::layoutDirection(), line, sign);
}

void LineDelegate::paintRow(RowPainting& row, const QModelIndex& index) const {
  using Side = RowPainting::Side;
  const Theme& theme = row.theme();
  const auto textOf = [&](LinesModel::Role role) { return index.data(role).toString(); };
  QRect upper = row.inner();
  upper.setBottom(upper.top() + upper.height() * 6 / 10);
  QRect lower = row.inner().adjusted(0, upper.height() - sized(3), 0, -sized(6));
  upper.setTop(upper.top() + sized(4));

  const QString amount = textOf(LinesModel::amountRole);
  const int codeWidth =
      row.text(upper, Side::start, textOf(LinesModel::codeRole), codeFont(), theme.text);
  const bool isOpen = open_ == index;
  const QStyle::State state = row.option().state;
  if (isOpen || state.testFlag(QStyle::State_Selected) || state.testFlag(QStyle::State_MouseOver)) {
    row.openingSign(signOf(row.option().rect, index), isOpen);
  }
  row.figure(row.without(upper, Side::start, codeWidth + sized(kSign)), amount, fontOf(19),
             theme.text);
  const QFont small = fontOf(12);
  QRect end = row.without(lower, Side::start, lower.width() / 3);
  const QString origin = textOf(LinesModel::originRole);
  QString rate = textOf(LinesModel::rateRole);
  // Of another day than the rest is what matters more than the rate.
  if (!origin.isEmpty()) {
    rate += " · " + origin;
    if (QFontMetrics(small).horizontalAdvance(rate) > end.width()) {
      rate = origin;
      end = lower;
    }
  }
  const int rateWidth =
      row.text(end, Side::end, rate, small, origin.isEmpty() ? theme.dim : theme.warning);
  row.text(row.without(lower, Side::end, rateWidth + sized(kColumnGap)), Side::start,
           textOf(LinesModel::nameRole), small, theme.dim);
}

}  // namespace fexora::desktop
