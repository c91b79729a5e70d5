#include "programs/desktop/HistoryThread.h"

#include "programs/desktop/QtText.h"

namespace fexora::desktop {

HistoryThread::HistoryThread(const Desk& desk, QObject* parent) : QObject(parent), desk_(desk) {
  connect(
      this, &HistoryThread::ended, this, [this] { told_.take()(); }, Qt::QueuedConnection);
}

HistoryThread::~HistoryThread() {
  // Behind all that waits there.
  steps_.put({});
  thread_.join();
}

// Not by Qt's threads and events, whose locks a thread checker does not see.
void HistoryThread::run(std::function<void(RateHistory&)> work) {
  if (history_ == nullptr) {
    history_ = rateHistory(desk_.store.applicationDocumentsDirectory(), *desk_.platform.files,
                           *desk_.platform.log);
    hasThread_ = thread_.start([this] {
      while (const auto step = steps_.take()) step();
    });
  }
  if (!hasThread_) return work(*history_);
  steps_.put([this, work = std::move(work)] { work(*history_); });
}

void HistoryThread::tell(std::function<void()> done) {
  told_.put(std::move(done));
  emit ended();
}

void HistoryThread::keep(std::vector<PublishedTable> tables, QObject* asker,
                         std::function<void(const QString& line)> told) {
  const double now = desk_.now().secondsSince1970();
  run([this, now, tables = std::move(tables), asker = QPointer(asker),
       told = std::move(told)](RateHistory& history) {
    const Kept kept = history.keep(tables, now);
    tell([this, asker, told, kept] {
      const QString line =
          kept.problem.empty()
              ? lineOf(kept.notice)
              : tr("The rates are not kept for later: %1").arg(lineOf(kept.problem));
      if (asker != nullptr && !line.isEmpty()) told(line);
      if (kept.tables + kept.figures + kept.corrected > 0) emit changed();
    });
  });
}

}  // namespace fexora::desktop
