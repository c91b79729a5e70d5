#include "programs/desktop/TextLine.h"

#include <QPainter>
#include <QStyle>

#include "programs/desktop/Style.h"

namespace fexora::desktop {

TextLine::TextLine(double pixels, Tone tone, QFont::Weight weight, QWidget* parent)
    : QLabel(parent), tone_(tone) {
  setFont(fontOf(pixels, weight));
  setTextFormat(Qt::PlainText);
}

void TextLine::setTone(Tone tone) {
  tone_ = tone;
  update();
}

void TextLine::setKeepsWhole(bool keeps) {
  keepsWhole_ = keeps;
  updateGeometry();
}

QSize TextLine::minimumSizeHint() const {
  return keepsWhole_ ? sizeHint() : QSize(0, sizeHint().height());
}

void TextLine::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(colour());
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
  const auto where = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
  painter.drawText(rect(), static_cast<int>(where) | Qt::TextSingleLine, shown);
}

void TextLine::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  setToolTip(fontMetrics().horizontalAdvance(text()) > width() ? text() : QString());
}

QColor TextLine::colour() const {
  const Theme& theme = themeOf(palette());
  switch (tone_) {
    case Tone::text:
      return theme.text;
    case Tone::accent:
      return theme.accent;
    case Tone::warning:
      return theme.warning;
    case Tone::dim:
      break;
  }
  return theme.dim;
}

}  // namespace fexora::desktop
