#include "programs/fexora/KeepFresh.h"

#include <string>

#include "programs/fexora/Output.h"
#include "programs/fexora/Refresh.h"

namespace fexora::program {

void KeepFresh::refresh() {
  startRefresh(store_, [this](const std::optional<Failure>& failure) {
    if (failure) {
      tell(failure->kind, failure->message);
    } else {
      tell(store_.saveProblem(), store_.saveProblem());
    }
    timer_ = Platform::process().loop->scheduleTimer(seconds_, [this] { refresh(); });
  });
}

void KeepFresh::tell(const std::string& cause, const std::string& message) {
  if (cause == toldCause_) return;
  toldCause_ = cause;
  if (!cause.empty()) printMessage(message);
}

}  // namespace fexora::program
