#include "programs/fexora/EndAsked.h"

#include <cerrno>
#include <cstdio>

#include <poll.h>
#include <unistd.h>

namespace fexora::program {
namespace {

volatile std::sig_atomic_t asked = 0;

void onSignal(int number) {
  asked = number;
}

}  // namespace

EndAsked::EndAsked() {
  asked = 0;
  sigemptyset(&signals_);
  struct sigaction action = {};
  action.sa_handler = onSignal;
  // What is being written goes on.
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], nullptr, &before_[i]);
    if (before_[i].sa_handler == SIG_IGN) continue;
    sigaction(kSignals[i], &action, nullptr);
    sigaddset(&signals_, kSignals[i]);
  }
}

EndAsked::~EndAsked() {
  for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &before_[i], nullptr);
}

bool EndAsked::awaitInput() const {
  // One that comes between the look and the wait is let in by the wait.
  sigset_t open;
  sigprocmask(SIG_BLOCK, &signals_, &open);
  pollfd input{STDIN_FILENO, POLLIN, 0};
  while (asked == 0 && ppoll(&input, 1, nullptr, &open) < 0 && errno == EINTR) continue;
  sigprocmask(SIG_SETMASK, &open, nullptr);
  return asked == 0;
}

void EndAsked::end() {
  if (asked == 0) return;
  std::fflush(nullptr);
  struct sigaction action = {};
  action.sa_handler = SIG_DFL;
  sigaction(asked, &action, nullptr);
  std::raise(asked);
}

}  // namespace fexora::program
