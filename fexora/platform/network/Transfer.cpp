#include "fexora/platform/network/Transfer.h"

#include <utility>

namespace fexora {

Transfer::Progress Transfer::Counts::progress() const noexcept {
  const std::uint64_t total = total_;
  return {received_, total > 0 ? std::optional(total) : std::nullopt};
}

void Transfer::Counts::cancel() {
  std::function<void()> ending;
  {
    const std::lock_guard lock(mutex_);
    isCancelled_ = true;
    ending.swap(ending_);
  }
  if (ending) ending();
}

void Transfer::Counts::setEnding(std::function<void()> ending) {
  {
    const std::lock_guard lock(mutex_);
    if (!isCancelled_) return ending_.swap(ending);
  }
  ending();
}

Transfer::Transfer(ProgressHandler handler) : handler_(std::move(handler)) {}

void Transfer::tell() {
  const Progress now = progress();
  if (isCancelled() || now.received == 0 || now == last_) return;
  last_ = now;
  handler_(now);
}

}  // namespace fexora
