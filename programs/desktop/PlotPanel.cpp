#include "programs/desktop/PlotPanel.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QStackedLayout>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "programs/desktop/FreshnessText.h"
#include "programs/desktop/HistoryThread.h"
#include "programs/desktop/Languages.h"
#include "programs/desktop/LinkButton.h"
#include "programs/desktop/PastImport.h"
#include "programs/desktop/QtText.h"
#include "programs/desktop/RatePlot.h"
#include "programs/desktop/SourceText.h"
#include "programs/desktop/Style.h"
#include "programs/desktop/TextLine.h"

namespace fexora::desktop {
namespace {

constexpr double kPanelMargin = 18;
constexpr std::array kRangeDays = {30, 365, 1826, 0};  // 0: all
constexpr std::size_t kManyDays = 250;                 // about a year's
constexpr Day kFirst = std::chrono::year(1900) / 1 / 1;

QString rangeKey() {
  return QStringLiteral("converter/plotRange");
}

// One of several that exclude each other; which is seen by its ground.
class RangeButton final : public QPushButton {
 public:
  explicit RangeButton(const QString& text) : QPushButton(text) {
    setCheckable(true);
    setFont(fontOf(12));
  }
  QSize sizeHint() const override {
    const QFontMetrics metrics(fontOf(12, QFont::DemiBold));
    return {metrics.horizontalAdvance(text()) + sized(16), metrics.height() + sized(10)};
  }
  QSize minimumSizeHint() const override {
    return {fontMetrics().horizontalAdvance(text()) + sized(4), sizeHint().height()};
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme& theme = themeOf(palette());
    painter.setPen(hasFocus() ? QPen(theme.accent, 1.5) : QPen(Qt::NoPen));
    painter.setBrush(isChecked() || underMouse() ? theme.button : QColor(Qt::transparent));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), sized(6), sized(6));
    painter.setFont(fontOf(12, isChecked() ? QFont::DemiBold : QFont::Normal));
    painter.setPen(isChecked() ? theme.text : theme.dim);
    painter.drawText(rect(), Qt::AlignCenter, text());
  }
};

// That the bank's own history was brought, and not only a day of it now and then.
bool holdsBank(const HistorySummary& kept) {
  return std::any_of(kept.sources.begin(), kept.sources.end(), [](const auto& line) {
    return line.source == "ecb" && line.tables >= kManyDays;
  });
}

}  // namespace

PlotPanel::PlotPanel(const Desk& desk, HistoryThread& history, PastImport& import, QWidget* parent)
    : QWidget(parent),
      desk_(desk),
      history_(history),
      import_(import),
      stack_(new QStackedLayout),
      ranges_(new QButtonGroup(this)),
      change_(new TextLine(12, TextLine::Tone::text, QFont::DemiBold)),
      plot_(new RatePlot(desk)),
      sourceLine_(new TextLine(11)),
      more_(new LinkButton({}, nullptr, 11)),
      known_(new TextLine(13, TextLine::Tone::text)),
      offerLine_(new QLabel),
      bar_(new QProgressBar),
      get_(new LinkButton) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(sized(kPanelMargin), sized(8), sized(kPanelMargin), sized(8));
  column->addLayout(stack_);
  stack_->addWidget(new QWidget);  // before the history has answered
  stack_->addWidget(buildShown());
  stack_->addWidget(buildOffer());
  const auto begin = [this] { import_.isRunning() ? import_.stop() : import_.start(); };
  connect(more_, &QPushButton::clicked, this, begin);
  connect(get_, &QPushButton::clicked, this, begin);
  connect(&import_, &PastImport::stateChanged, this, &PlotPanel::showImport);
  connect(&history_, &HistoryThread::changed, this, &PlotPanel::ask);
}

int PlotPanel::wantedHeight() const {
  constexpr double kPlot = 232;
  constexpr double kOffer = 136;
  return sized(isAnswered_ && !hasRates() ? kOffer : kPlot);
}

QWidget* PlotPanel::buildShown() {
  auto* const page = new QWidget;
  auto* const column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(sized(2));
  auto* const head = new QHBoxLayout;
  head->setSpacing(0);
  const QLocale locale = languageLocale();
  const QStringList names = {tr("%1 days").arg(locale.toString(30)), tr("1 year"),
                             tr("%1 years").arg(locale.toString(5)), tr("All")};
  for (const QString& name : names) {
    auto* const button = new RangeButton(name);
    ranges_->addButton(button, static_cast<int>(ranges_->buttons().size()));
    head->addWidget(button);
  }
  const int wanted = QSettings().value(rangeKey(), 0).toInt();
  ranges_->button(std::clamp(wanted, 0, static_cast<int>(kRangeDays.size()) - 1))->setChecked(true);
  connect(ranges_, &QButtonGroup::idClicked, this, [this](int range) {
    QSettings().setValue(rangeKey(), range);
    showRange();
  });
  head->addStretch(1);
  head->addWidget(change_);
  change_->setAccessibleDescription(tr("Change from the first day to the last"));
  change_->setKeepsWhole(true);
  column->addLayout(head);
  column->addWidget(plot_, 1);
  connect(plot_, &RatePlot::left, this, &PlotPanel::left);
  connect(plot_, &RatePlot::stepped, this, &PlotPanel::stepped);
  auto* const foot = new QHBoxLayout;
  foot->addWidget(sourceLine_, 1);
  foot->addWidget(more_);
  column->addLayout(foot);
  return page;
}

QWidget* PlotPanel::buildOffer() {
  auto* const page = new QWidget;
  auto* const column = new QVBoxLayout(page);
  column->setContentsMargins(0, sized(6), 0, 0);
  column->setSpacing(sized(6));
  offerLine_->setFont(fontOf(12));
  offerLine_->setWordWrap(true);
  offerLine_->setForegroundRole(QPalette::PlaceholderText);
  bar_->setTextVisible(false);
  bar_->setFixedHeight(sized(3));
  bar_->setAccessibleName(tr("Getting the past"));
  column->addWidget(known_);
  column->addWidget(offerLine_);
  column->addWidget(bar_);
  auto* const row = new QHBoxLayout;
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(get_);
  row->addStretch(1);
  column->addLayout(row);
  column->addStretch(1);
  return page;
}

void PlotPanel::setPair(const CurrencyRef& source, const CurrencyRef& destination) {
  if (source_ != nullptr && source_->code() == source->code() &&
      destination_->code() == destination->code()) {
    return;
  }
  source_ = source;
  destination_ = destination;
  ask();
}

void PlotPanel::ask() {
  if (source_ == nullptr) return;
  const auto work = [from = source_->code(), to = destination_->code(),
                     last = dayOfMoment(desk_.now().secondsSince1970()) +
                            std::chrono::days(1)](RateHistory& history) {
    Past past;
    past.rates = history.between(kFirst, last, from, to, {});
    past.problem = history.problem();
    past.hasBank = holdsBank(history.summary());
    return past;
  };
  history_.ask(this, work, [this, from = source_, to = destination_](Past& past) {
    if (from == source_ && to == destination_) take(std::move(past));
  });
}

void PlotPanel::take(Past past) {
  past_ = std::move(past);
  const bool isOther =
      !std::exchange(isAnswered_, true) || hasRates() != (stack_->currentIndex() == 1);
  const bool hadFocus = isAncestorOf(focusWidget()) && focusWidget()->hasFocus();
  hasRates() ? showRange() : showOffer();
  showImport();
  if (isOther) emit heightChanged();
  if (hadFocus) takeFocus();
}

// Up to the last day that is known; two rates at least.
std::vector<DayRate> PlotPanel::inRange() const {
  const int days = kRangeDays.at(static_cast<std::size_t>(ranges_->checkedId()));
  auto first = past_.rates.begin();
  if (days > 0) {
    const Day begin = past_.rates.back().day - std::chrono::days(days);
    first = std::lower_bound(first, past_.rates.end() - 2, begin,
                             [](const DayRate& rate, Day day) { return rate.day < day; });
  }
  return {first, past_.rates.end()};
}

void PlotPanel::showRange() {
  std::vector<DayRate> rates = inRange();
  change_->setText(percentText((rates.back().rate / rates.front().rate - 1) * 100));
  const bool isProblem = !past_.problem.empty();
  sourceLine_->setTone(isProblem ? TextLine::Tone::warning : TextLine::Tone::dim);
  sourceLine_->setText(isProblem ? lineOf(past_.problem) : sourceText(rates));
  plot_->setRates(std::move(rates), codeOf(*destination_));
  stack_->setCurrentIndex(1);
  fitTexts();
}

QString PlotPanel::sourceText(const std::vector<DayRate>& rates) const {
  const QString source = sourceInWords(rates.front().source);
  const auto gap = std::adjacent_find(
      rates.begin(), rates.end(),
      [](const DayRate& a, const DayRate& b) { return b.day - a.day > program::kPlotGap; });
  if (gap != rates.end()) return tr("%1; dotted where unknown", "a source").arg(source);
  const auto day = [this](const DayRate& rate) {
    return inWords(rate.day, desk_.now(), languageLocale());
  };
  return tr("%1, %2 to %3", "a source of rates, first and last day")
      .arg(source, day(rates.front()), day(rates.back()));
}

void PlotPanel::showOffer() {
  known_->setText(past_.rates.empty()
                      ? tr("No past rates of this pair are known.")
                      : tr("Only the rate of %1 is known.")
                            .arg(inWords(past_.rates.front().day, desk_.now(), languageLocale())));
  stack_->setCurrentIndex(2);
}

// Both pages have a way to begin and to stop.
void PlotPanel::showImport() {
  const bool isRunning = import_.isRunning();
  const Transfer::Progress& progress = import_.progress();
  const QString state = isRunning ? import_.inWords() : import_.problem();
  const QString offer =
      past_.hasBank ? tr("Each refresh adds a day.")
                    : tr("Each refresh adds a day. The European Central Bank publishes its rates "
                         "since 1999, some 40 currencies.");
  offerLine_->setText(!state.isEmpty()        ? state
                      : past_.problem.empty() ? offer
                                              : lineOf(past_.problem));
  bar_->setVisible(isRunning);
  bar_->setRange(0, static_cast<int>(progress.total.value_or(0)));
  bar_->setValue(static_cast<int>(progress.received));
  get_->setVisible(isRunning || !past_.hasBank);
  get_->setText(isRunning ? tr("Stop") : tr("Get them (1 MB)"));
  more_->setVisible(get_->isVisibleTo(get_->parentWidget()));
  more_->setText(isRunning ? tr("Stop") : tr("Since 1999…"));
  more_->setToolTip(isRunning ? state : tr("Get the rates of the European Central Bank (1 MB)"));
  if (!past_.rates.empty() && !state.isEmpty()) sourceLine_->setText(state);
  if (past_.rates.size() > 1 && state.isEmpty()) sourceLine_->setText(sourceText(inRange()));
  updateGeometry();
}

void PlotPanel::takeFocus() {
  if (stack_->currentIndex() == 1) return plot_->setFocus(Qt::OtherFocusReason);
  get_->isVisible() ? get_->setFocus(Qt::OtherFocusReason) : setFocus(Qt::OtherFocusReason);
}

// A narrow window drops the change first.
void PlotPanel::fitTexts() {
  int wanted = change_->sizeHint().width();
  for (const QAbstractButton* button : ranges_->buttons()) wanted += button->sizeHint().width();
  change_->setVisible(wanted + sized(2 * kPanelMargin) <= width());
}

void PlotPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  fitTexts();
}

void PlotPanel::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
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

void PlotPanel::paintEvent(QPaintEvent* /*event*/) {
  constexpr double kBar = 3;
  QPainter painter(this);
  const Theme& theme = themeOf(palette());
  painter.fillRect(rect(), theme.row);
  painter.fillRect(QRect(0, height() - 1, width(), 1), theme.hairline);
  const QRect bar(0, 0, sized(kBar), height());
  painter.fillRect(QStyle::visualRect(layoutDirection(), rect(), bar), theme.accent);
}

}  // namespace fexora::desktop
