#include "programs/desktop/Refresher.h"

#include <QSettings>

#include "programs/desktop/HistoryThread.h"
#include "programs/desktop/PowerSaver.h"
#include "programs/desktop/ProblemText.h"
#include "programs/sources/TakenTables.h"

namespace fexora::desktop {
namespace {

constexpr double kSoon = 3600;
constexpr int kLookEveryMilliseconds = 15 * 60 * 1000;

QString lastTryKey() {
  return QStringLiteral("refresh/lastTry");
}

}  // namespace

Refresher::Refresher(const Desk& desk, HistoryThread& history, QObject* parent)
    : QObject(parent), desk_(desk), history_(history), fresh_(desk.rates, desk.store) {
  desk_.rates.setAnswerCheck(plausible());
  fresh_.setTaken([this](const std::string& name, const std::vector<RatesTable>& tables) {
    keep(name, tables);
  });
  fresh_.setProgress([self = QPointer(this)](const Transfer::Progress& progress) {
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
  fresh_.start(fresh_.steps(),
               [self = QPointer(this)](const std::optional<program::RatesProblem>& problem) {
                 if (self != nullptr) self->finish(problem);
               });
}

void Refresher::stop() {
  if (!isRunning_) return;
  isRunning_ = false;
  fresh_.stop();
  emit stateChanged();
}

void Refresher::startByItself() {
  timer_.start();
  startIfStale();
}

void Refresher::startIfStale() {
  const double last = QSettings().value(lastTryKey(), 0.0).toDouble();
  const double passed = desk_.now().secondsSince1970() - last;
  const bool isSoon = passed >= 0 && passed < kSoon;
  if (isSoon || fresh_.steps().empty() ||
      desk_.rates.freshness().state == Freshness::State::fresh || savesPower())
    return;
  start();
}

void Refresher::keep(const std::string& name, const std::vector<RatesTable>& tables) {
  history_.keep(sources::takenTables({name}, tables), this, [this](const QString& line) {
    if (isRunning_ || !problem_.isEmpty()) return;
    problem_ = line;
    emit stateChanged();
  });
}

void Refresher::finish(const std::optional<program::RatesProblem>& problem) {
  isRunning_ = false;
  const AnswerVerdict& verdict = desk_.rates.verdict();
  problem_ = problem ? inWords(*problem, verdict) : remarksOn(verdict);
  emit stateChanged();
  if (!problem) emit refreshed();
}

}  // namespace fexora::desktop
