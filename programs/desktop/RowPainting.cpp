#include "programs/desktop/RowPainting.h"

#include <QFontMetrics>
#include <QStyle>
#include <algorithm>

namespace fexora::desktop {
namespace {

constexpr double kBar = 3;
constexpr int kSmallestFigure = 8;

}  // namespace

RowPainting::RowPainting(QPainter& painter, const QStyleOptionViewItem& option)
    : painter_(painter),
      option_(option),
      theme_(themeOf(option.palette)),
      inner_(option.rect.adjusted(sized(kRowMargin), 0, -sized(kRowMargin), 0)) {}

void RowPainting::ground() {
  const bool selected = option_.state.testFlag(QStyle::State_Selected);
  painter_.fillRect(option_.rect, selected ? theme_.selected : theme_.row);
  QRect line = option_.rect;
  line.setTop(line.bottom());
  painter_.fillRect(line, theme_.hairline);
  if (!selected) return;
  const QRect bar(option_.rect.topLeft(), QSize(sized(kBar), option_.rect.height()));
  painter_.fillRect(QStyle::visualRect(option_.direction, option_.rect, bar), theme_.accent);
}

int RowPainting::text(const QRect& area, Side side, const QString& text, const QFont& font,
                      const QColor& colour) {
  const QFontMetrics metrics(font);
  const QString shown = metrics.elidedText(text, Qt::ElideRight, area.width());
  const auto edge = side == Side::start ? Qt::AlignLeft : Qt::AlignRight;
  painter_.setFont(font);
  painter_.setPen(colour);
  // The side is the row's, whatever the direction of the text itself.
  const auto alignment = QStyle::visualAlignment(option_.direction, edge);
  painter_.setLayoutDirection(Qt::LeftToRight);
  painter_.drawText(area, static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextSingleLine,
                    shown);
  return metrics.horizontalAdvance(shown);
}

int RowPainting::figure(const QRect& area, const QString& text, QFont font, const QColor& colour) {
  const int wanted = QFontMetrics(font).horizontalAdvance(text);
  if (wanted > area.width() && area.width() > 0) {
    font.setPixelSize(std::max(kSmallestFigure, font.pixelSize() * area.width() / wanted));
  }
  return this->text(area, Side::end, text, font, colour);
}

void RowPainting::openingSign(const QRect& area, bool isOpen) {
  const double half = sized(4);
  const double side = option_.direction == Qt::RightToLeft ? -half : half;
  const QPointF middle = QRectF(area).center();
  QPolygonF sign;
  if (isOpen) {
    sign << QPointF(-half, -half / 2) << QPointF(0, half / 2) << QPointF(half, -half / 2);
  } else {
    sign << QPointF(-side / 2, -half) << QPointF(side / 2, 0) << QPointF(-side / 2, half);
  }
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setPen(QPen(theme_.dim, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter_.drawPolyline(sign.translated(middle));
  painter_.setRenderHint(QPainter::Antialiasing, false);
}

void RowPainting::sparkline(const QRectF& area, QPolygonF shape) {
  const double radius = sized(2);
  const QRectF inner = area.adjusted(radius, radius, -radius, -radius);
  const bool mirrored = option_.direction == Qt::RightToLeft;
  for (QPointF& point : shape) {
    const double along = mirrored ? 1 - point.x() : point.x();
    point = {inner.left() + along * inner.width(), inner.bottom() - point.y() * inner.height()};
  }
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setPen(QPen(theme_.dim, 1.25, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter_.setBrush(Qt::NoBrush);
  painter_.drawPolyline(shape);
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(theme_.accent);
  painter_.drawEllipse(shape.back(), radius, radius);
  painter_.setRenderHint(QPainter::Antialiasing, false);
}

QRect RowPainting::without(const QRect& area, Side side, int width) const {
  QRect rest = area;
  const bool atLeft = (side == Side::start) == (option_.direction == Qt::LeftToRight);
  if (atLeft) rest.setLeft(rest.left() + width);
  if (!atLeft) rest.setRight(rest.right() - width);
  return rest;
}

}  // namespace fexora::desktop
