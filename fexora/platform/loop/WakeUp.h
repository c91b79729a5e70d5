// A descriptor by which one thread ends another's wait: readable from `wake` until `clear`.
#pragma once

#include "fexora/platform/base/Export.h"

namespace fexora {

class FEXORA_API WakeUp {
 public:
  WakeUp();
  WakeUp(const WakeUp&) = delete;
  WakeUp& operator=(const WakeUp&) = delete;
  ~WakeUp();

  // -1 when the process had none left; waking does nothing then.
  int descriptor() const noexcept { return descriptor_; }
  // Any thread.
  void wake() const noexcept;
  // The thread that waits.
  void clear() const noexcept;

 private:
  const int descriptor_;
};

}  // namespace fexora
