#include "programs/desktop/FreshnessDot.h"

#include <QPainter>

#include "programs/desktop/Style.h"

namespace fexora::desktop {

FreshnessDot::FreshnessDot(QWidget* parent) : QWidget(parent) {
  constexpr double kSize = 8;
  setFixedSize(sized(kSize), sized(kSize));
}

void FreshnessDot::setFresh(bool isFresh) {
  isFresh_ = isFresh;
  update();
}

void FreshnessDot::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Theme& theme = themeOf(palette());
  painter.setPen(Qt::NoPen);
  painter.setBrush(isFresh_ ? theme.good : theme.warning);
  painter.drawEllipse(rect());
}

}  // namespace fexora::desktop
