// How long a host's main loop is kept from going on: each stretch between two waits of GLib's
// default main context.
#pragma once

#include <chrono>
#include <vector>

#include <glib.h>

#include "bench/host/TimedFiles.h"

namespace fexora::bench {

// One at a time, on the main thread; while it lives, each stretch is noted.
class LoopStalls {
 public:
  explicit LoopStalls(const TimedFiles& files);
  LoopStalls(const LoopStalls&) = delete;
  LoopStalls& operator=(const LoopStalls&) = delete;
  ~LoopStalls();

  // Of the stretches so far, the current one included, the longest: with the waits for the disk and
  // without. Seconds.
  double longest() const;
  double longestWithoutFlushes() const;

 private:
  struct Stretch {
    double seconds;
    double flushes;
  };

  static int poll(GPollFD* descriptors, guint count, int timeout);
  void begin();
  Stretch current() const;

  static LoopStalls* active;
  const TimedFiles& files_;
  GPollFunc poll_;
  std::chrono::steady_clock::time_point since_;
  double flushesBefore_ = 0;
  std::vector<Stretch> stretches_;
};

}  // namespace fexora::bench
