#include "fexora/platform/network/WorkerThread.h"

#include <system_error>
#include <utility>

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

namespace fexora {

bool WorkerThread::start(std::function<void()> work) {
  // A thread begins with its maker's mask, so that no signal can slip in before it sets its own.
  sigset_t all{};
  sigset_t before{};
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  bool started = true;
  try {
    thread_ = std::thread(std::move(work));
  } catch (const std::system_error&) {
    started = false;
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  process_ = getpid();
  return started;
}

void WorkerThread::join() {
  if (!thread_.joinable()) return;
  if (process_ == getpid()) {
    thread_.join();
  } else {
    thread_.detach();
  }
}

}  // namespace fexora
