// Brings the past: the reference rates of the European Central Bank since 1999, into the history.
//
// Only when a person asks for it. The text comes over the network as every source's does, and is
// read and kept on the history's thread, all of it or none. Main thread.
#pragma once

#include <QObject>
#include <memory>

#include "programs/desktop/Desk.h"
#include "programs/shared/FreshRates.h"

namespace fexora::desktop {

class HistoryThread;

class PastImport final : public QObject {
  Q_OBJECT

 public:
  PastImport(const Desk& desk, HistoryThread& history, QObject* parent = nullptr);

  bool isRunning() const { return run_ != nullptr; }
  // Of the request; nothing before its first byte. What has come whole is being read.
  const Transfer::Progress& progress() const { return progress_; }
  // "Getting the past… 12 of 48 KB"; empty while none is running.
  QString inWords() const;
  // Why the last one brought nothing: one line, empty when it went well or was stopped.
  const QString& problem() const { return problem_; }

  void start();
  // Ends it; nothing is kept unless all of it was already.
  void stop();

 signals:
  // Running or not, how far, and the problem.
  void stateChanged();

 private:
  // One import: what it still has to do ends with it.
  struct Run;

  void read(std::string text);
  void finish(const QString& problem);

  Desk desk_;
  HistoryThread& history_;
  program::FreshRates fresh_;
  std::shared_ptr<Run> run_;
  Transfer::Progress progress_;
  QString problem_;
};

}  // namespace fexora::desktop
