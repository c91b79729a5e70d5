#include "fexora/platform/network/WorkerThread.h"

#include <exception>
#include <utility>

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

namespace fexora {
namespace {

// A thread begins with its maker's mask, so that no signal can slip in before it sets its own.
class BlockedSignals {
 public:
  BlockedSignals() noexcept {
    sigset_t all{};
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;
  ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_{};
};

}  // namespace

bool WorkerThread::start(std::function<void()> work) {
  if (thread_.joinable()) return false;
  const BlockedSignals blocked;
  try {
    thread_ = std::thread(std::move(work));
  } catch (const std::exception&) {  // no thread, or no memory for one
    return false;
  }
  process_ = getpid();
  return true;
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
