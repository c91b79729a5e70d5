#include "programs/desktop/FreshnessCaption.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QProgressBar>
#include <QVBoxLayout>

#include "programs/desktop/FreshnessDot.h"
#include "programs/desktop/FreshnessText.h"
#include "programs/desktop/Languages.h"
#include "programs/desktop/LinkButton.h"
#include "programs/desktop/QtText.h"
#include "programs/desktop/Refresher.h"
#include "programs/desktop/Style.h"
#include "programs/desktop/TextLine.h"

namespace fexora::desktop {
namespace {

constexpr double kActionHeight = 44;
constexpr double kLine = 30;
constexpr double kCaptionMargin = 18;
constexpr double kCaptionGap = 4;
constexpr double kLinkPadding = 4;

}  // namespace

FreshnessCaption::FreshnessCaption(const Desk& desk, Refresher& refresher, QWidget* parent)
    : QWidget(parent),
      desk_(desk),
      refresher_(refresher),
      dot_(new FreshnessDot),
      rates_(new TextLine(12)),
      age_(new TextLine(12, TextLine::Tone::warning, QFont::DemiBold)),
      store_(new TextLine(12, TextLine::Tone::warning)),
      status_(new TextLine(12, TextLine::Tone::warning)),
      progress_(new QProgressBar),
      action_(new LinkButton) {
  build();
  connectParts();
  setStoreProblem({});
  refreshText();
  showState();
}

void FreshnessCaption::build() {
  const int margin = sized(kCaptionMargin);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  for (TextLine* const line : {store_, status_}) {
    line->setFixedHeight(sized(kLine));
    line->setContentsMargins(margin, 0, margin, 0);
    column->addWidget(line);
  }
  store_->setAccessibleDescription(tr("State of the store"));
  status_->setAccessibleDescription(tr("State of the refresh"));
  column->addWidget(progress_);
  progress_->setTextVisible(false);
  progress_->setFixedHeight(sized(3));
  progress_->setAccessibleName(tr("Refreshing"));
  auto* const row = new QHBoxLayout;
  // Margins would not change sides in a language that runs from right to left.
  row->setContentsMargins(margin - sized(kLinkPadding), 0, margin - sized(kLinkPadding), 0);
  row->setSpacing(sized(kCaptionGap));
  row->addSpacing(sized(kLinkPadding));
  row->addWidget(dot_);
  row->addSpacing(sized(kCaptionGap));
  row->addWidget(rates_);
  row->addWidget(age_);
  row->addStretch(1);
  row->addWidget(action_);
  column->addLayout(row);
  age_->setKeepsWhole(true);
  action_->setFixedHeight(sized(kActionHeight));
}

void FreshnessCaption::connectParts() {
  nextWords_.setSingleShot(true);
  nextWords_.setTimerType(Qt::VeryCoarseTimer);
  connect(&nextWords_, &QTimer::timeout, this, &FreshnessCaption::refreshText);
  connect(action_, &QPushButton::clicked, this,
          [this] { refresher_.isRunning() ? refresher_.stop() : refresher_.start(); });
  connect(&refresher_, &Refresher::stateChanged, this, &FreshnessCaption::showState);
  connect(&refresher_, &Refresher::refreshed, this, &FreshnessCaption::refreshText);
}

void FreshnessCaption::refreshText() {
  const Freshness freshness = desk_.rates.freshness();
  words_ = inWords(freshness, desk_.now(), languageLocale());
  if (!pastDay_.isEmpty()) words_ = pastInWords(pastDay_, pastSource_);
  dot_->setVisible(pastDay_.isEmpty());
  dot_->setFresh(words_.isFresh);
  age_->setText(words_.age);
  age_->setTone(words_.isFresh ? TextLine::Tone::dim : TextLine::Tone::warning);
  nextWords_.start(secondsToNextWords(freshness, desk_.now()) * 1000);
  fitText();
}

// A narrow window drops first where the rates are from.
void FreshnessCaption::fitText() {
  const QString mark = words_.age.isEmpty() ? QString() : tr(",", "before an age");
  const int taken = age_->sizeHint().width() + action_->sizeHint().width() + dot_->width() +
                    sized(2 * kCaptionMargin) + 5 * sized(kCaptionGap);
  const bool fits = rates_->fontMetrics().horizontalAdvance(words_.rates + mark) + taken <= width();
  rates_->setText((fits ? words_.rates : words_.dated) + mark);
  rates_->setWhole(words_.whole());
}

void FreshnessCaption::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  fitText();
}

void FreshnessCaption::setPast(const QString& day, const QString& source) {
  pastDay_ = day;
  pastSource_ = source;
  refreshText();
}

void FreshnessCaption::setStoreProblem(const QString& problem) {
  store_->setText(problem);
  store_->setVisible(!problem.isEmpty());
}

void FreshnessCaption::showState() {
  const bool isRunning = refresher_.isRunning();
  const QString status = isRunning ? progressText() : refresher_.problem();
  showBar();
  status_->setVisible(!status.isEmpty());
  status_->setTone(isRunning ? TextLine::Tone::dim : TextLine::Tone::warning);
  status_->setText(status);
  action_->setText(isRunning ? tr("Stop") : tr("Refresh"));
  action_->setToolTip(isRunning ? tr("Stop refreshing") : tr("Ask for fresh rates (F5)"));
  action_->updateGeometry();
  fitText();
}

// Full at the end where that is known, else moving.
void FreshnessCaption::showBar() {
  const Transfer::Progress& progress = refresher_.progress();
  progress_->setVisible(refresher_.isRunning());
  progress_->setRange(0, static_cast<int>(progress.total.value_or(0)));
  progress_->setValue(static_cast<int>(progress.received));
}

// Nothing for an answer that comes at once: the window's rows would only jump.
QString FreshnessCaption::progressText() const {
  const Transfer::Progress& progress = refresher_.progress();
  if (progress.received == 0) return {};
  const QString received = kilobytesText(progress.received);
  if (!progress.total) return tr("Refreshing… %1 KB").arg(received);
  return tr("Refreshing… %1 of %2 KB").arg(received, kilobytesText(*progress.total));
}

void FreshnessCaption::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(QRect(0, 0, width(), 1), themeOf(palette()).hairline);
}

}  // namespace fexora::desktop
