// What the rows of every list have in common: their ground, and texts at the start and the end.
#pragma once

#include <QFont>
#include <QPainter>
#include <QPolygonF>
#include <QStyleOptionViewItem>

#include "programs/desktop/Style.h"

namespace fexora::desktop {

// At both ends of a row, and between what stands there.
constexpr double kRowMargin = 18;
constexpr double kColumnGap = 12;

class RowPainting {
 public:
  RowPainting(QPainter& painter, const QStyleOptionViewItem& option);

  // The ground, a hairline at its foot, and where the row is current the bar at its start.
  void ground();
  enum class Side { start, end };
  // Draws `text` in the part of `area`, cut with an ellipsis; gives the width it took.
  int text(const QRect& area, Side side, const QString& text, const QFont& font,
           const QColor& colour);
  // The same, drawn smaller rather than cut.
  int figure(const QRect& area, const QString& text, QFont font, const QColor& colour);

  // A sign for a row that opens, below or beside itself, in the middle of `area`.
  void openingSign(const QRect& area, bool isOpen);

  // A small line over `area`, in the row's direction, its last point in the accent; both sides of
  // `shape` from 0 to 1, upwards.
  void sparkline(const QRectF& area, QPolygonF shape);

  const QStyleOptionViewItem& option() const { return option_; }
  const Theme& theme() const { return theme_; }
  // The row without its margins.
  QRect inner() const { return inner_; }
  // `area` without `width` at one side.
  QRect without(const QRect& area, Side side, int width) const;

 private:
  QPainter& painter_;
  const QStyleOptionViewItem& option_;
  const Theme& theme_;
  QRect inner_;
};

}  // namespace fexora::desktop
