// How the rate of a pair moved: a line over days, with its lowest and highest marked, and the value
// of a day under the pointer or by the arrow keys.
//
// Days run in the direction of reading. Between days that are far apart the line is dotted. Colours
// say nothing of better or worse: what rises is good for one side of a pair. What the plot shows
// stands in its accessible description, and the chosen day in its name.
#pragma once

#include <QPolygonF>
#include <QWidget>
#include <optional>
#include <vector>

#include "programs/desktop/Desk.h"
#include "programs/shared/PlotScale.h"

namespace fexora::desktop {

struct Theme;

class RatePlot final : public QWidget {
  Q_OBJECT

 public:
  explicit RatePlot(const Desk& desk, QWidget* parent = nullptr);

  // Two rates at least, oldest first. `code` is the currency that they are in.
  void setRates(std::vector<DayRate> rates, const QString& code);
  // "first 0.8643, 15 August; lowest …; highest …; last …"
  QString inWords() const;
  // "0.87020 EUR, Fri 18 September"; empty while no day is chosen.
  QString chosenInWords() const;

  QSize sizeHint() const override;

 signals:
  // Escape, and the ways out to the line above or below.
  void left();
  void stepped(int rows);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  // The line as it is drawn: no more points than can be seen.
  struct Line {
    std::vector<QPolygonF> parts;
    std::vector<QLineF> gaps;
    QPolygonF all;
  };
  Line lineOf() const;
  // Where the line is: within figures above and below, and those of the axis beyond.
  void fit();
  double xOf(Day day) const;
  double yOf(double rate) const;
  QPointF pointOf(const DayRate& rate) const { return {xOf(rate.day), yOf(rate.rate)}; }
  void choose(std::optional<std::size_t> index);
  // The day next to there.
  std::size_t nearest(double x) const;
  std::size_t pageStep() const { return std::max<std::size_t>(rates_.size() / 20, 2); }

  void paintAxes(QPainter& painter, const Theme& theme) const;
  void paintLine(QPainter& painter, const Theme& theme, const Line& line) const;
  static void paintPart(QPainter& painter, const QPolygonF& part);
  void paintExtremes(QPainter& painter, const Theme& theme) const;
  void paintChosen(QPainter& painter, const Theme& theme, const Line& line) const;
  void paintBubble(QPainter& painter, const Theme& theme, const Line& line) const;
  QString valueText(double rate) const;

  Desk desk_;
  std::vector<DayRate> rates_;
  program::PlotScale scale_;
  std::size_t lowest_ = 0;
  std::size_t highest_ = 0;
  int digits_ = 0;  // that tell the rates apart
  QString code_;
  QRectF area_;
  std::optional<std::size_t> chosen_;
};

}  // namespace fexora::desktop
