// The history of rates on a thread of its own, so that neither the disk nor another process that
// writes it ever holds up a window.
//
// Main thread but for the work.
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

#include "fexora/platform/network/WorkerThread.h"

#include "programs/desktop/Desk.h"
#include "programs/desktop/StepQueue.h"

namespace fexora::desktop {

class HistoryThread final : public QObject {
  Q_OBJECT

 public:
  // Of the container that the store lies in. No thread before the first call; where the machine
  // gives none, the main thread does the work.
  explicit HistoryThread(const Desk& desk, QObject* parent = nullptr);
  // What was begun comes to its end, and so does what waits behind it; nobody is told any more.
  ~HistoryThread() override;

  // Calls `work` with the history, in the order of these calls; then, on the main thread, `done`
  // with what it gave, unless `asker` is gone by then.
  template <class Work, class Done>
  void ask(QObject* asker, Work work, Done done) {
    using Answer = std::invoke_result_t<Work, RateHistory&>;
    run([this, asker = QPointer(asker), work = std::move(work),
         done = std::move(done)](RateHistory& history) mutable {
      auto answer = std::make_shared<Answer>(work(history));
      tell([asker = std::move(asker), done = std::move(done), answer = std::move(answer)] {
        if (asker != nullptr) done(*answer);
      });
    });
  }

  // Keeps the tables; `told` gets one line for a person where they are not kept, or only in a new
  // history.
  void keep(std::vector<PublishedTable> tables, QObject* asker,
            std::function<void(const QString& line)> told);

 signals:
  // Other tables than before are kept.
  void changed();
  // This object's own way back from its thread: there is one step more to be told.
  void ended();

 private:
  void run(std::function<void(RateHistory&)> work);
  void tell(std::function<void()> done);

  Desk desk_;
  StepQueue steps_;  // of the thread; an empty one ends it
  StepQueue told_;   // of the main thread
  std::unique_ptr<RateHistory> history_;
  bool hasThread_ = false;
  WorkerThread thread_;
};

}  // namespace fexora::desktop
