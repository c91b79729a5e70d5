#include "programs/desktop/LinkButton.h"

#include <QPainter>

#include "programs/desktop/Style.h"

namespace fexora::desktop {

LinkButton::LinkButton(const QString& text, QWidget* parent, double pixels)
    : QPushButton(text, parent) {
  setFont(fontOf(pixels, QFont::DemiBold));
  setCursor(Qt::PointingHandCursor);
  setFlat(true);
}

QSize LinkButton::sizeHint() const {
  const QSize size = fontMetrics().size(Qt::TextShowMnemonic, text());
  return size + QSize(sized(8), sized(8));
}

void LinkButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Theme& theme = themeOf(palette());
  const QColor colour = isEnabled() ? theme.accent : theme.dim;
  if (hasFocus()) {
    painter.setPen(QPen(colour, 1.5));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
  }
  QFont shown = font();
  shown.setUnderline(underMouse() && isEnabled());
  painter.setFont(shown);
  painter.setPen(colour);
  painter.drawText(rect(), static_cast<int>(Qt::AlignCenter) | Qt::TextShowMnemonic, text());
}

}  // namespace fexora::desktop
