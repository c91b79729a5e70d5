// A thread of the library's own, which is always joined.
#pragma once

#include <functional>
#include <thread>

#include "fexora/platform/base/Export.h"

namespace fexora {

// Used by one thread at a time.
class FEXORA_API WorkerThread {
 public:
  WorkerThread() = default;
  WorkerThread(const WorkerThread&) = delete;
  WorkerThread& operator=(const WorkerThread&) = delete;
  ~WorkerThread() { join(); }

  // Runs `work`, with all signals left to the host's threads. False when the machine gives no
  // thread or no memory for it, and when one has not been joined yet.
  bool start(std::function<void()> work);
  // Waits for the end of the work. Does nothing without a thread, nor in a forked child, which has
  // not inherited it.
  void join();

 private:
  std::thread thread_;
  int process_ = 0;
};

}  // namespace fexora
