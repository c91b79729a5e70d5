// The process's files, which tell how long the disk made them wait.
#pragma once

#include <chrono>

#include "fexora/platform/files/PosixFiles.h"

namespace fexora::bench {

class TimedFiles final : public PosixFiles {
 public:
  std::error_code flush(Handle handle) override {
    const auto begin = std::chrono::steady_clock::now();
    const std::error_code error = PosixFiles::flush(handle);
    seconds_ += std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    return error;
  }
  // Spent in all flushes so far.
  double flushSeconds() const noexcept { return seconds_; }

 private:
  double seconds_ = 0;
};

}  // namespace fexora::bench
