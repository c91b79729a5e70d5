#include "programs/desktop/RatePlot.h"

#include <QFontMetricsF>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

#include "programs/desktop/FreshnessText.h"
#include "programs/desktop/Languages.h"
#include "programs/desktop/QtText.h"
#include "programs/desktop/Style.h"

namespace fexora::desktop {
namespace {

constexpr double kPlotHeight = 150;
constexpr double kSmall = 11;
constexpr double kAbove = 20;  // for the figure of the highest
constexpr double kBelow = 36;  // for that of the lowest, and the days
constexpr double kPlotGap = 8;

bool isLess(const DayRate& a, const DayRate& b) {
  return a.rate < b.rate;
}

std::size_t placeOf(const std::vector<DayRate>& rates, std::vector<DayRate>::const_iterator rate) {
  return static_cast<std::size_t>(rate - rates.begin());
}

QRectF centredText(const QFontMetricsF& metrics, const QString& text, const QPointF& middle) {
  QRectF box(0, 0, metrics.horizontalAdvance(text) + 1, metrics.height());
  box.moveCenter(middle);
  return box;
}

QRectF heldWithin(QRectF box, double left, double right) {
  if (box.right() > right) box.moveRight(right);
  if (box.left() < left) box.moveLeft(left);
  return box;
}

}  // namespace

RatePlot::RatePlot(const Desk& desk, QWidget* parent) : QWidget(parent), desk_(desk) {
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize RatePlot::sizeHint() const {
  return {sized(200), sized(kPlotHeight)};
}

void RatePlot::setRates(std::vector<DayRate> rates, const QString& code) {
  constexpr double kSteps = 200;  // that can be told apart in the plot's height
  rates_ = std::move(rates);
  code_ = code;
  scale_ = program::plotScale(rates_);
  lowest_ = placeOf(rates_, std::min_element(rates_.cbegin(), rates_.cend(), isLess));
  highest_ = placeOf(rates_, std::max_element(rates_.cbegin(), rates_.cend(), isLess));
  const double step = (scale_.high - scale_.low) / kSteps;
  digits_ = std::clamp(static_cast<int>(std::ceil(-std::log10(step))), 0, 15);
  choose(hasFocus() ? std::optional(rates_.size() - 1) : std::nullopt);
  setAccessibleDescription(inWords());
  update();
}

QString RatePlot::valueText(double rate) const {
  return fixedText(rate, digits_);
}

QString RatePlot::inWords() const {
  if (rates_.empty()) return {};
  const auto said = [this](const DayRate& rate) {
    return tr("%1, %2", "a rate and its day")
        .arg(valueText(rate.rate), desktop::inWords(rate.day, desk_.now(), languageLocale()));
  };
  return tr("first %1; lowest %2; highest %3; last %4")
      .arg(said(rates_.front()), said(rates_[lowest_]), said(rates_[highest_]),
           said(rates_.back()));
}

QString RatePlot::chosenInWords() const {
  if (!chosen_) return {};
  const DayRate& rate = rates_[*chosen_];
  return tr("%1, %2", "a rate and its day")
      .arg(leftToRight(valueText(rate.rate) + ' ' + code_),
           languageLocale().toString(toQt(rate.day),
                                     tr("ddd d MMMM yyyy", "a day with its weekday")));
}

void RatePlot::fit() {
  const QFontMetricsF metrics(fontOf(kSmall));
  double widest = 0;
  for (const double number : scale_.numbers()) {
    widest = std::max(widest, metrics.horizontalAdvance(fixedText(number, scale_.digits)));
  }
  const double axis = widest + sized(kPlotGap);
  const bool mirrored = layoutDirection() == Qt::RightToLeft;
  area_ = QRectF(rect()).adjusted(mirrored ? axis : 0, sized(kAbove), mirrored ? 0 : -axis,
                                  -sized(kBelow));
}

void RatePlot::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  fit();
}

double RatePlot::xOf(Day day) const {
  const double part = static_cast<double>((day - rates_.front().day).count()) /
                      static_cast<double>((rates_.back().day - rates_.front().day).count());
  const bool mirrored = layoutDirection() == Qt::RightToLeft;
  return area_.left() + (mirrored ? 1 - part : part) * area_.width();
}

double RatePlot::yOf(double rate) const {
  return area_.bottom() - (rate - scale_.low) / (scale_.high - scale_.low) * area_.height();
}

// Gaps are found before points are left out, or else years of days would be all gaps. Of each
// column of pixels the first, the lowest, the highest and the last point stay.
RatePlot::Line RatePlot::lineOf() const {
  Line line;
  QPolygonF part;
  const auto pointAt = [this](std::size_t i) { return pointOf(rates_[i]); };
  const auto take = [&](std::size_t begin, std::size_t end) {  // a column's points
    const auto at = [this](std::size_t i) {
      return rates_.begin() + static_cast<std::ptrdiff_t>(i);
    };
    const auto [low, high] = std::minmax_element(at(begin), at(end), isLess);
    std::array<std::size_t, 4> kept = {begin, placeOf(rates_, low), placeOf(rates_, high), end - 1};
    std::sort(kept.begin(), kept.end());
    const auto last = std::unique(kept.begin(), kept.end());
    std::for_each(kept.begin(), last, [&](std::size_t each) { part << pointAt(each); });
  };
  const auto endPart = [&] {
    line.all += part;
    line.parts.push_back(std::exchange(part, {}));
  };
  std::size_t begin = 0;
  for (std::size_t i = 1; i <= rates_.size(); ++i) {
    const bool isEnd = i == rates_.size();
    const bool isGap = !isEnd && rates_[i].day - rates_[i - 1].day > program::kPlotGap;
    if (!isEnd && !isGap && std::floor(pointAt(i).x()) == std::floor(pointAt(begin).x())) continue;
    take(begin, i);
    begin = i;
    if (isGap) line.gaps.emplace_back(pointAt(i - 1), pointAt(i));
    if (isEnd || isGap) endPart();
  }
  return line;
}

void RatePlot::paintEvent(QPaintEvent* /*event*/) {
  if (rates_.empty()) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  // Every place is worked out here.
  painter.setLayoutDirection(Qt::LeftToRight);
  const Theme& theme = themeOf(palette());
  fit();
  const Line line = lineOf();
  paintAxes(painter, theme);
  paintLine(painter, theme, line);
  paintExtremes(painter, theme);
  if (chosen_) paintChosen(painter, theme, line);
}

void RatePlot::paintAxes(QPainter& painter, const Theme& theme) const {
  const QFont font = fontOf(kSmall);
  const QFontMetricsF metrics(font);
  const bool mirrored = layoutDirection() == Qt::RightToLeft;
  painter.setFont(font);
  for (const double number : scale_.numbers()) {
    const double y = yOf(number);
    painter.setPen(QPen(theme.hairline, 1));
    painter.drawLine(QPointF(area_.left(), y), QPointF(area_.right(), y));
    const QRectF beside(
        mirrored ? 0.0 : area_.right() + sized(kPlotGap), y - metrics.height() / 2,
        mirrored ? area_.left() - sized(kPlotGap) : width() - area_.right() - sized(kPlotGap),
        metrics.height());
    painter.setPen(theme.dim);
    painter.drawText(beside, Qt::AlignRight | Qt::AlignVCenter, fixedText(number, scale_.digits));
  }
  const std::array patterns = {tr("d MMM", "a day on an axis"), tr("MMM", "a month on an axis"),
                               tr("yyyy", "a year on an axis")};
  const int most = std::max(2, static_cast<int>(area_.width() / sized(64)));
  double free = 0;  // where the last text ends
  for (const program::DayMark& mark :
       program::dayMarks(rates_.front().day, rates_.back().day, most)) {
    const QString text =
        languageLocale().toString(toQt(mark.day), patterns.at(static_cast<std::size_t>(mark.unit)));
    const QRectF box = centredText(metrics, text, {xOf(mark.day), height() - metrics.height() / 2});
    const QRectF held = heldWithin(box, area_.left(), area_.right());
    const double far = mirrored ? width() - held.right() : held.left();
    if (far < free) continue;
    free = far + held.width() + sized(kPlotGap);
    painter.drawText(held, Qt::AlignCenter, text);
  }
}

// One long line with its joins takes many times as long as its pieces do, whose joins cannot be
// seen where they are close.
void RatePlot::paintPart(QPainter& painter, const QPolygonF& part) {
  constexpr qsizetype kManyPoints = 100;
  if (part.size() == 1) return painter.drawPoint(part.front());
  if (part.size() < kManyPoints) return painter.drawPolyline(part);
  QPen pen = painter.pen();
  pen.setCapStyle(Qt::FlatCap);
  painter.setPen(pen);
  QList<QLineF> pieces;
  pieces.reserve(part.size());
  for (qsizetype i = 1; i < part.size(); ++i) pieces << QLineF(part[i - 1], part[i]);
  painter.drawLines(pieces);
}

void RatePlot::paintLine(QPainter& painter, const Theme& theme, const Line& line) const {
  const double foot = area_.bottom() + sized(kBelow) / 2.0;
  QPolygonF ground = line.all;
  ground << QPointF(line.all.back().x(), foot) << QPointF(line.all.front().x(), foot);
  QColor colour = theme.accent;
  QLinearGradient fade(0, area_.top(), 0, foot);
  colour.setAlphaF(0.16F);
  fade.setColorAt(0, colour);
  colour.setAlphaF(0);
  fade.setColorAt(1, colour);
  painter.setPen(Qt::NoPen);
  painter.setBrush(fade);
  painter.drawPolygon(ground);

  QPen pen(theme.accent, sized(15) / 10.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  painter.setPen(pen);
  painter.setBrush(Qt::NoBrush);
  for (const QPolygonF& part : line.parts) paintPart(painter, part);
  pen.setStyle(Qt::DotLine);
  painter.setPen(pen);
  for (const QLineF& gap : line.gaps) painter.drawLine(gap);
}

void RatePlot::paintExtremes(QPainter& painter, const Theme& theme) const {
  if (rates_[lowest_].rate == rates_[highest_].rate) return;
  const QFont font = fontOf(kSmall, QFont::DemiBold);
  const QFontMetricsF metrics(font);
  const double radius = sized(35) / 10.0;
  painter.setFont(font);
  for (const bool isHigh : {false, true}) {
    const DayRate& rate = rates_[isHigh ? highest_ : lowest_];
    const QPointF point = pointOf(rate);
    painter.setPen(QPen(theme.accent, sized(15) / 10.0));
    painter.setBrush(theme.row);
    painter.drawEllipse(point, radius, radius);
    const double away = radius + metrics.height() / 2 + 1;
    const QString text = valueText(rate.rate);
    const QRectF box = centredText(metrics, text, point + QPointF(0, isHigh ? -away : away));
    painter.setPen(theme.text);
    painter.drawText(heldWithin(box, 0, width()), Qt::AlignCenter, text);
  }
}

void RatePlot::paintChosen(QPainter& painter, const Theme& theme, const Line& line) const {
  const QPointF point = pointOf(rates_[*chosen_]);
  painter.setPen(QPen(theme.dim, 1));
  painter.drawLine(QPointF(point.x(), area_.top()),
                   QPointF(point.x(), area_.bottom() + sized(kBelow) / 2.0));
  painter.setPen(QPen(theme.row, sized(15) / 10.0));
  painter.setBrush(theme.accent);
  painter.drawEllipse(point, sized(45) / 10.0, sized(45) / 10.0);
  paintBubble(painter, theme, line);
}

// In the corner where it covers the least of the line.
void RatePlot::paintBubble(QPainter& painter, const Theme& theme, const Line& line) const {
  const DayRate& rate = rates_[*chosen_];
  const QFont large = fontOf(13, QFont::DemiBold);
  const QFont small = fontOf(kSmall);
  const QString value = leftToRight(valueText(rate.rate) + ' ' + code_);
  const QString day =
      languageLocale().toString(toQt(rate.day), tr("ddd d MMMM yyyy", "a day with its weekday"));
  const QFontMetricsF largeMetrics(large);
  const QFontMetricsF smallMetrics(small);
  const double pad = sized(kPlotGap);
  QRectF box(0, 0,
             std::max(largeMetrics.horizontalAdvance(value), smallMetrics.horizontalAdvance(day)) +
                 2 * pad,
             largeMetrics.height() + smallMetrics.height() + pad);
  const double right = std::max(area_.left(), area_.right() - box.width());
  const double bottom = area_.bottom() + sized(kBelow) / 2.0 - box.height();
  const QPointF point = pointOf(rate);
  QPointF best;
  double least = -1;
  for (const QPointF corner : {QPointF(area_.left(), 0), QPointF(right, 0),
                               QPointF(area_.left(), bottom), QPointF(right, bottom)}) {
    box.moveTopLeft(corner);
    // The chosen point itself counts more than any part of the line.
    double covered = box.adjusted(-pad, 0, pad, 0).contains(point) ? 1e6 : 0;
    for (const QPointF& each : line.all) covered += box.contains(each) ? 1 : 0;
    if (least >= 0 && covered >= least) continue;
    least = covered;
    best = corner;
  }
  box.moveTopLeft(best);
  painter.setPen(QPen(theme.hairline, 1));
  painter.setBrush(theme.button);
  painter.drawRoundedRect(box, sized(6), sized(6));
  const auto start = layoutDirection() == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft;
  const QRectF text = box.adjusted(pad, pad / 2, -pad, -pad / 2);
  painter.setFont(large);
  painter.setPen(theme.text);
  painter.drawText(text, static_cast<int>(start | Qt::AlignTop), value);
  painter.setFont(small);
  painter.setPen(theme.dim);
  painter.drawText(text, static_cast<int>(start | Qt::AlignBottom), day);
}

void RatePlot::choose(std::optional<std::size_t> index) {
  chosen_ = index;
  setAccessibleName(chosen_ ? chosenInWords() : tr("How the rate moved"));
  update();
}

std::size_t RatePlot::nearest(double x) const {
  const bool mirrored = layoutDirection() == Qt::RightToLeft;
  // Further with each day.
  const auto isBefore = [&](const DayRate& rate, double at) {
    return mirrored ? xOf(rate.day) > at : xOf(rate.day) < at;
  };
  const auto after = std::lower_bound(rates_.cbegin(), rates_.cend(), x, isBefore);
  if (after == rates_.cbegin()) return 0;
  const bool isNearer =
      after != rates_.cend() && std::abs(xOf(after->day) - x) < std::abs(xOf((after - 1)->day) - x);
  return placeOf(rates_, isNearer ? after : after - 1);
}

void RatePlot::mouseMoveEvent(QMouseEvent* event) {
  if (!rates_.empty()) choose(nearest(event->position().x()));
}

void RatePlot::leaveEvent(QEvent* /*event*/) {
  if (!hasFocus()) choose({});
}

void RatePlot::keyPressEvent(QKeyEvent* event) {
  if (rates_.empty()) return QWidget::keyPressEvent(event);
  const std::size_t last = rates_.size() - 1;
  const std::size_t at = chosen_.value_or(last);
  const std::size_t step = event->modifiers().testFlag(Qt::ControlModifier) ? pageStep() : 1;
  const auto back = [&](std::size_t by) { choose(at - std::min(at, by)); };
  const auto forth = [&](std::size_t by) { choose(std::min(at + by, last)); };
  const bool mirrored = layoutDirection() == Qt::RightToLeft;
  switch (event->key()) {
    case Qt::Key_Left:
      return mirrored ? forth(step) : back(step);
    case Qt::Key_Right:
      return mirrored ? back(step) : forth(step);
    case Qt::Key_PageUp:
      return back(pageStep());
    case Qt::Key_PageDown:
      return forth(pageStep());
    case Qt::Key_Home:
      return choose(0);
    case Qt::Key_End:
      return choose(last);
    case Qt::Key_Escape:
      return emit left();
    case Qt::Key_Up:
      return emit stepped(0);
    case Qt::Key_Down:
      return emit stepped(1);
    default:
      return QWidget::keyPressEvent(event);
  }
}

void RatePlot::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  if (!rates_.empty() && !chosen_) choose(rates_.size() - 1);
}

void RatePlot::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  choose({});
}

}  // namespace fexora::desktop
