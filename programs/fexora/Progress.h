// Tells a person at a terminal that something takes its time.
#pragma once

#include <memory>
#include <string>

#include "fexora/fexora.h"

namespace fexora::program {

// From half a second on, a line on standard error with what has come and the time passed, rewritten
// twice a second and wiped in the end. Nothing where standard error is no terminal. Needs a running
// loop. Main thread.
class Progress {
 public:
  // `received` is looked at whenever the line is written, and outlives this.
  Progress(std::string text, const Transfer::Progress& received);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

 private:
  void schedule();
  void show();

  std::string text_;
  const Transfer::Progress& received_;
  double begin_ = 0;
  bool shown_ = false;
  std::shared_ptr<Timer> timer_;
};

}  // namespace fexora::program
