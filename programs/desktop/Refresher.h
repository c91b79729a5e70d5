// Brings fresh rates when asked, and by itself when the rates are stale.
//
// By itself at most once an hour, starts of the program counted together, and never while the
// desktop saves power or the store's setting says that nobody is asked. What is taken is kept for
// later, too, on the history's thread. It sets the rate manager's check of answers and its
// progress. Main thread.
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include "programs/desktop/Desk.h"
#include "programs/shared/FreshRates.h"

namespace fexora::desktop {

class HistoryThread;

class Refresher final : public QObject {
  Q_OBJECT

 public:
  Refresher(const Desk& desk, HistoryThread& history, QObject* parent = nullptr);

  bool isRunning() const { return isRunning_; }
  // Of the request that is running; nothing before the first byte of the answer.
  const Transfer::Progress& progress() const { return progress_; }
  // Why the last request brought nothing, or what was odd about what it brought, or why it could
  // not be kept for later: one line for a person; empty when it went well.
  const QString& problem() const { return problem_; }

  void start();
  // Ends the request that is running; what has come of it is not taken.
  void stop();
  // From now on by itself, too; called again, it looks anew.
  void startByItself();

 signals:
  // Running or not, how far, and the problem.
  void stateChanged();
  // New rates are in the store, and so is the service's message in the rate manager.
  void refreshed();

 private:
  void startIfStale();
  void keep(const std::string& name, const std::vector<RatesTable>& tables);
  void finish(const std::optional<program::RatesProblem>& problem);

  Desk desk_;
  HistoryThread& history_;
  program::FreshRates fresh_;
  bool isRunning_ = false;
  Transfer::Progress progress_;
  QString problem_;
  QTimer timer_;
};

}  // namespace fexora::desktop
