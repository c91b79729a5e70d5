#include "c/SessionLog.h"

#include <new>
#include <utility>

namespace fexora::c {

void SessionLog::write(std::string_view line) try {
  const std::lock_guard lock(mutex_);
  if (taker_ != nullptr) {
    taker_(data_, std::string(line).c_str());
  } else if (kept_.size() < kKept) {
    kept_.emplace_back(line);
  }
} catch (const std::bad_alloc&) {  // NOLINT(bugprone-empty-catch): a line less
}

void SessionLog::setTaker(Taker* taker, void* data) {
  const std::lock_guard lock(mutex_);
  taker_ = taker;
  data_ = data;
  if (taker == nullptr) return;
  for (const std::string& line : std::exchange(kept_, {})) taker(data, line.c_str());
}

}  // namespace fexora::c
