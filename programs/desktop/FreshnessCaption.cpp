#include "programs/desktop/FreshnessCaption.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QProgressBar>
#include <QVBoxLayout>

#include "programs/desktop/FreshnessText.h"
#include "programs/desktop/Languages.h"
#include "programs/desktop/LinkButton.h"
#include "programs/desktop/Refresher.h"
#include "programs/desktop/Style.h"
#include "programs/desktop/TextLine.h"

namespace fexora::desktop {
namespace {

constexpr double kHeight = 44;
constexpr double kDot = 8;
constexpr double kMargin = 18;
constexpr double kLinkPadding = 4;

}  // namespace

FreshnessCaption::FreshnessCaption(const Desk& desk, Refresher& refresher, QWidget* parent)
    : QWidget(parent),
      desk_(desk),
      refresher_(refresher),
      rates_(new TextLine(12)),
      age_(new TextLine(12, TextLine::Tone::warning, QFont::DemiBold)),
      status_(new TextLine(12, TextLine::Tone::warning)),
      progress_(new QProgressBar),
      action_(new LinkButton) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(sized(kMargin - kLinkPadding), 0, sized(kMargin - kLinkPadding), 0);
  column->setSpacing(0);
  auto* const state = new QHBoxLayout;
  state->addSpacing(sized(kLinkPadding));
  state->setSpacing(0);
  state->addWidget(status_);
  column->addLayout(state);
  column->addWidget(progress_);
  auto* const row = new QHBoxLayout;
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(sized(4));
  row->addSpacing(sized(kLinkPadding + kDot + 8) - row->spacing());
  row->addWidget(rates_);
  row->addWidget(age_);
  row->addStretch(1);
  row->addWidget(action_);
  column->addLayout(row);
  age_->setKeepsWhole(true);
  action_->setFixedHeight(sized(kHeight));
  status_->setContentsMargins(0, 0, 0, 0);
  status_->setFixedHeight(sized(30));
  status_->setAccessibleDescription(tr("State of the refresh"));
  progress_->setRange(0, 0);
  progress_->setTextVisible(false);
  progress_->setFixedHeight(sized(3));
  progress_->setAccessibleName(tr("Refreshing"));
  nextWords_.setSingleShot(true);
  nextWords_.setTimerType(Qt::VeryCoarseTimer);
  connect(&nextWords_, &QTimer::timeout, this, &FreshnessCaption::refreshText);
  connect(action_, &QPushButton::clicked, this,
          [this] { refresher_.isRunning() ? refresher_.stop() : refresher_.start(); });
  connect(&refresher_, &Refresher::stateChanged, this, &FreshnessCaption::showState);
  connect(&refresher_, &Refresher::refreshed, this, &FreshnessCaption::refreshText);
  refreshText();
  showState();
}

void FreshnessCaption::refreshText() {
  const Freshness freshness = desk_.rates.freshness();
  words_ = inWords(freshness, desk_.now(), languageLocale());
  age_->setText(words_.age);
  age_->setTone(words_.isFresh ? TextLine::Tone::dim : TextLine::Tone::warning);
  nextWords_.start(secondsToNextWords(freshness, desk_.now()) * 1000);
  fitText();
  update();
}

// Where the rates are from is what a narrow window leaves away first.
void FreshnessCaption::fitText() {
  const QString mark = words_.age.isEmpty() ? QString() : tr(",", "before an age");
  const int taken = age_->sizeHint().width() + action_->sizeHint().width() +
                    sized(2 * kMargin + kDot + 4) + 4 * sized(4);
  const bool fits = rates_->fontMetrics().horizontalAdvance(words_.rates + mark) + taken <= width();
  rates_->setText((fits ? words_.rates : words_.dated) + mark);
  rates_->setToolTip(words_.whole());
}

void FreshnessCaption::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  fitText();
}

void FreshnessCaption::setProblem(const QString& problem) {
  problem_ = problem;
  showState();
}

void FreshnessCaption::showState() {
  const bool isRunning = refresher_.isRunning();
  const QString problem = refresher_.problem().isEmpty() ? problem_ : refresher_.problem();
  const QString status = isRunning ? progressText() : problem;
  showBar();
  status_->setVisible(!status.isEmpty());
  status_->setTone(isRunning ? TextLine::Tone::dim : TextLine::Tone::warning);
  status_->setText(status);
  status_->setToolTip(status);
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
  const auto inKilobytes = [](std::uint64_t bytes) {
    constexpr std::uint64_t kKilobyte = 1024;
    const std::uint64_t begun = (bytes + kKilobyte - 1) / kKilobyte;
    return languageLocale().toString(static_cast<qulonglong>(begun));
  };
  if (progress.received == 0) return {};
  const QString received = inKilobytes(progress.received);
  if (!progress.total) return tr("Refreshing… %1 KB").arg(received);
  return tr("Refreshing… %1 of %2 KB").arg(received, inKilobytes(*progress.total));
}

void FreshnessCaption::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Theme& theme = themeOf(palette());
  painter.fillRect(QRect(0, 0, width(), 1), theme.hairline);
  painter.setPen(Qt::NoPen);
  painter.setBrush(words_.isFresh ? theme.good : theme.warning);
  const double size = sized(kDot);
  const double left =
      layoutDirection() == Qt::RightToLeft ? width() - sized(kMargin) - size : sized(kMargin);
  const QRect line = rates_->geometry();
  painter.drawEllipse(QRectF(left, line.center().y() + 1 - size / 2, size, size));
}

}  // namespace fexora::desktop
