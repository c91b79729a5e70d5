// Refreshes the rates at once and then again and again.
#pragma once

#include <memory>
#include <string>

#include "fexora/fexora.h"

namespace fexora::program {

// The next refresh begins `seconds` after the last one has ended, so that a slow service is never
// asked twice at a time. What fails is said on standard error, once for each cause in a row. Needs
// a running loop; outlives it. Main thread.
class KeepFresh {
 public:
  KeepFresh(StoreManager& store, double seconds) : store_(store), seconds_(seconds) { refresh(); }
  KeepFresh(const KeepFresh&) = delete;
  KeepFresh& operator=(const KeepFresh&) = delete;

 private:
  void refresh();
  void tell(const std::string& cause, const std::string& message);

  StoreManager& store_;
  double seconds_;
  std::string toldCause_;
  std::shared_ptr<Timer> timer_;
};

}  // namespace fexora::program
