#include "programs/desktop/SourceButton.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "programs/desktop/Style.h"

namespace fexora::desktop {
namespace {

constexpr double kArrow = 8;
// A store may hold any text for a code.
constexpr double kLongestWidth = 80;

}  // namespace

SourceButton::SourceButton(QWidget* parent) : QPushButton(parent) {
  setFont(fontOf(15, QFont::DemiBold));
}

QSize SourceButton::sizeHint() const {
  const int wanted = fontMetrics().horizontalAdvance(text());
  return {std::min(wanted, sized(kLongestWidth)) + sized(24 + 6 + kArrow), sized(36)};
}

void SourceButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Theme& theme = themeOf(palette());
  const QRectF area = QRectF(rect()).adjusted(1, 1, -1, -1);
  painter.setPen(hasFocus() ? QPen(theme.accent, 2) : QPen(Qt::NoPen));
  painter.setBrush(isDown() || underMouse() ? theme.hairline : theme.button);
  painter.drawRoundedRect(area, sized(7), sized(7));

  const bool mirrored = layoutDirection() == Qt::RightToLeft;
  const QRect label = rect().adjusted(sized(12), 0, -sized(12), 0);
  painter.setPen(theme.text);
  // Left is where a text begins: the painter knows the direction.
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, sized(kLongestWidth));
  painter.drawText(label, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeft), shown);
  const double arrow = sized(kArrow);
  const double left = mirrored ? label.left() : label.right() - arrow;
  const double top = label.center().y() - arrow / 4;
  QPainterPath path;
  path.moveTo(left, top);
  path.lineTo(left + arrow, top);
  path.lineTo(left + arrow / 2, top + arrow * 0.7);
  path.closeSubpath();
  painter.fillPath(path, theme.text);
}

}  // namespace fexora::desktop
