// Below a line that is open: how its rate moved, over 30 days, a year, five years or all that is
// known; where nothing is, an offer to get it.
#pragma once

#include <QWidget>
#include <vector>

#include "programs/desktop/Desk.h"

class QButtonGroup;
class QLabel;
class QProgressBar;
class QStackedLayout;

namespace fexora::desktop {

class HistoryThread;
class LinkButton;
class PastImport;
class RatePlot;
class TextLine;

class PlotPanel final : public QWidget {
  Q_OBJECT

 public:
  // Both must outlive it.
  PlotPanel(const Desk& desk, HistoryThread& history, PastImport& import,
            QWidget* parent = nullptr);

  // In pixels, by what it shows.
  int wantedHeight() const;

  // Shows that pair; asks the history where it is another one than before.
  void setPair(const CurrencyRef& source, const CurrencyRef& destination);
  // Whether the history has said what it knows, and that is enough for a plot.
  bool isAnswered() const { return isAnswered_; }
  bool hasRates() const { return past_.rates.size() > 1; }
  RatePlot& plot() { return *plot_; }
  // Of what is shown, on the keyboard.
  void takeFocus();

 signals:
  void heightChanged();
  void left();
  // To the line itself, or to the one below.
  void stepped(int rows);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // What the history says of the pair.
  struct Past {
    std::vector<DayRate> rates;
    bool hasBank = false;  // whether the bank's tables of many years are there
    std::string problem;
  };

  QWidget* buildShown();
  QWidget* buildOffer();
  void ask();
  void take(Past past);
  void showRange();
  void showOffer();
  void showImport();
  std::vector<DayRate> inRange() const;
  QString sourceText(const std::vector<DayRate>& rates) const;
  void fitTexts();

  Desk desk_;
  HistoryThread& history_;
  PastImport& import_;
  CurrencyRef source_;
  CurrencyRef destination_;
  Past past_;
  bool isAnswered_ = false;

  QStackedLayout* stack_;
  QButtonGroup* ranges_;
  TextLine* change_;
  RatePlot* plot_;
  TextLine* sourceLine_;
  LinkButton* more_;
  TextLine* known_;
  QLabel* offerLine_;
  QProgressBar* bar_;
  LinkButton* get_;
};

}  // namespace fexora::desktop
