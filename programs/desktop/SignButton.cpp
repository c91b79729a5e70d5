#include "programs/desktop/SignButton.h"

#include <QPainterPath>
#include <QStyleOptionToolButton>
#include <QStylePainter>

#include "programs/desktop/Style.h"

namespace fexora::desktop {
namespace {

// In a square of sixteen, whose middle is the origin.
QPainterPath strokesOf(SignButton::Sign sign) {
  QPainterPath path;
  const auto line = [&path](double x, double y, double toX, double toY) {
    path.moveTo(x, y);
    path.lineTo(toX, toY);
  };
  const auto arrow = [&](double x, double tail, double tip) {
    const double back = tip > tail ? tip - 3 : tip + 3;
    line(x, tail, x, tip);
    line(x - 3, back, x, tip);
    line(x + 3, back, x, tip);
  };
  switch (sign) {
    case SignButton::Sign::menu:
      for (const double y : {-4.5, 0.0, 4.5}) line(-6, y, 6, y);
      break;
    case SignButton::Sign::swap:
      arrow(-3.5, 5.5, -5.5);
      arrow(3.5, -5.5, 5.5);
      break;
    case SignButton::Sign::close:
      line(-4, -4, 4, 4);
      line(-4, 4, 4, -4);
      break;
  }
  return path;
}

}  // namespace

SignButton::SignButton(Sign sign, const QString& name, const QString& keys, QWidget* parent)
    : QToolButton(parent), sign_(sign) {
  setAutoRaise(true);
  setAccessibleName(name);
  setToolTip(keys.isEmpty() ? name : name + " (" + keys + ')');
}

QSize SignButton::sizeHint() const {
  return {sized(28), sized(26)};
}

void SignButton::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  QStyleOptionToolButton option;
  initStyleOption(&option);
  option.features &= ~QStyleOptionToolButton::HasMenu;  // the sign says it
  painter.drawComplexControl(QStyle::CC_ToolButton, option);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(QRectF(rect()).center());
  const double scale = sized(160) / 160.0;
  painter.scale(scale, scale);
  painter.strokePath(strokesOf(sign_), QPen(palette().color(QPalette::ButtonText), 1.6,
                                            Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

}  // namespace fexora::desktop
