#include "programs/desktop/PastImport.h"

#include <QPointer>
#include <atomic>
#include <utility>

#include "fexora/platform/network/ShownAddress.h"

#include "programs/desktop/HistoryThread.h"
#include "programs/desktop/ProblemText.h"
#include "programs/desktop/QtText.h"
#include "programs/shared/PastSources.h"

namespace fexora::desktop {

struct PastImport::Run {
  std::atomic<bool> isStopped = false;
};

PastImport::PastImport(const Desk& desk, HistoryThread& history, QObject* parent)
    : QObject(parent), desk_(desk), history_(history), fresh_(desk.rates, desk.store) {
  fresh_.setProgress([this](const Transfer::Progress& progress) {
    progress_ = progress;
    emit stateChanged();
  });
}

QString PastImport::inWords() const {
  if (!isRunning()) return {};
  if (progress_.received == 0) return tr("Getting the past…");
  const QString received = kilobytesText(progress_.received);
  if (!progress_.total) return tr("Getting the past… %1 KB").arg(received);
  return tr("Getting the past… %1 of %2 KB").arg(received, kilobytesText(*progress_.total));
}

void PastImport::start() {
  if (isRunning()) return;
  run_ = std::make_shared<Run>();
  problem_.clear();
  progress_ = {};
  emit stateChanged();
  fresh_.fetch(*program::pastStep("ecb"), [self = QPointer(this), run = run_](
                                              std::optional<std::string> text,
                                              const program::RatesProblem& problem) {
    if (self == nullptr || self->run_ != run) return;
    text ? self->read(*std::move(text)) : self->finish(desktop::inWords(problem.error));
  });
}

void PastImport::stop() {
  if (!isRunning()) return;
  run_->isStopped = true;
  run_ = nullptr;
  fresh_.stop();
  emit stateChanged();
}

void PastImport::read(std::string text) {
  const double now = desk_.now().secondsSince1970();
  const std::string name = shownAddress(program::pastStep("ecb")->addresses.front());
  history_.ask(
      this,
      [run = run_, now,
       operand = sources::PastOperand{name, std::move(text)}](RateHistory& history) -> std::string {
        const program::PastTablesRead past = program::readPastTables(operand);
        if (!past.problem.empty() || run->isStopped) return past.problem;
        return history.keep(past.tables, now).problem;
      },
      [this, run = run_](const std::string& problem) {
        if (run_ == run) finish(lineOf(problem));
      });
}

void PastImport::finish(const QString& problem) {
  run_ = nullptr;
  problem_ = problem;
  emit stateChanged();
  if (problem.isEmpty()) emit history_.changed();
}

}  // namespace fexora::desktop
