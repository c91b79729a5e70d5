#include "programs/desktop/Refresher.h"

#include <QSettings>

#include "programs/desktop/PowerSaver.h"
#include "programs/desktop/ProblemText.h"
#include "programs/shared/RatesRequest.h"

namespace fexora::desktop {
namespace {

constexpr double kHour = 3600;
constexpr int kLookEveryMilliseconds = 15 * 60 * 1000;

QString lastTryKey() {
  return QStringLiteral("refresh/lastTry");
}

}  // namespace

Refresher::Refresher(const Desk& desk, QObject* parent) : QObject(parent), desk_(desk) {
  desk_.rates.setAnswerCheck(plausible());
  desk_.rates.setProgress([self = QPointer(this)](const Transfer::Progress& progress) {
    if (self == nullptr || !self->isRunning_) return;
    self->progress_ = progress;
    emit self->stateChanged();
  });
  timer_.setTimerType(Qt::VeryCoarseTimer);
  timer_.setInterval(kLookEveryMilliseconds);
  connect(&timer_, &QTimer::timeout, this, &Refresher::startIfStale);
}

void Refresher::start() {
  if (isRunning_) return;
  isRunning_ = true;
  problem_.clear();
  progress_ = {};
  QSettings().setValue(lastTryKey(), desk_.now().secondsSince1970());
  emit stateChanged();
  program::askForFreshRates(desk_.rates, [self = QPointer(this)](const ResponseError* error) {
    const bool isStopped = error != nullptr && error->kind == ResponseError::Kind::cancelled;
    if (self != nullptr && !isStopped) self->finish(error);
  });
}

void Refresher::stop() {
  if (!isRunning_) return;
  isRunning_ = false;
  desk_.rates.cancelRequests();
  emit stateChanged();
}

void Refresher::startByItself() {
  timer_.start();
  startIfStale();
}

void Refresher::startIfStale() {
  const double last = QSettings().value(lastTryKey(), 0.0).toDouble();
  const double passed = desk_.now().secondsSince1970() - last;
  const bool isSoon = passed >= 0 && passed < kHour;
  if (isSoon || desk_.rates.freshness().state == Freshness::State::fresh || savesPower()) return;
  start();
}

void Refresher::finish(const ResponseError* error) {
  isRunning_ = false;
  if (error != nullptr) problem_ = inWords(*error);
  emit stateChanged();
  if (error == nullptr) emit refreshed();
}

}  // namespace fexora::desktop
