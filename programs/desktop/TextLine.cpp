#include "programs/desktop/TextLine.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include "programs/desktop/PlainLabels.h"
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
  const QRect area = contentsRect();
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, area.width());
  const auto where = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
  painter.drawText(area, static_cast<int>(where) | Qt::TextSingleLine, shown);
}

bool TextLine::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  const bool isCut = fontMetrics().horizontalAdvance(text()) > contentsRect().width();
  const QString whole = whole_.isEmpty() ? text() : whole_;
  // The window's own, if it has one, where nothing is left out.
  if (!isCut && whole == text()) return false;
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), wrapped(whole), this);
  return true;
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
