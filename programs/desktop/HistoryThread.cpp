#include "programs/desktop/HistoryThread.h"

#include "programs/desktop/QtText.h"

namespace fexora::desktop {

HistoryThread::HistoryThread(const Desk& desk, QObject* parent) : QObject(parent), desk_(desk) {
  connect(
      this, &HistoryThread::ended, this, [](const std::function<void()>& done) { done(); },
      Qt::QueuedConnection);
}

HistoryThread::~HistoryThread() {
  if (worker_ == nullptr) return;
  // Behind all that waits there.
  emit begun([this] { thread_.quit(); });
  thread_.wait();
}

void HistoryThread::run(std::function<void(RateHistory&)> work) {
  if (worker_ == nullptr) {
    history_ = rateHistory(desk_.store.applicationDocumentsDirectory(), *desk_.platform.files,
                           *desk_.platform.log);
    worker_ = std::make_unique<QObject>();
    worker_->moveToThread(&thread_);
    connect(this, &HistoryThread::begun, worker_.get(),
            [](const std::function<void()>& step) { step(); });
    thread_.setObjectName(QStringLiteral("history"));
    thread_.start();
  }
  emit begun([this, work = std::move(work)] { work(*history_); });
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
