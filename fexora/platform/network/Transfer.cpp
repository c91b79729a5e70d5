#include "fexora/platform/network/Transfer.h"

#include <utility>

namespace fexora {

Transfer::Progress Transfer::Counts::progress() const noexcept {
  const std::uint64_t total = total_;
  return {received_, total > 0 ? std::optional(total) : std::nullopt};
}

Transfer::Transfer(Told told) : told_(std::move(told)) {}

void Transfer::cancel() {
  if (isCancelled()) return;
  counts_->cancel();
  if (const auto ending = std::exchange(ending_, {})) ending();
}

void Transfer::setEnding(std::function<void()> ending) {
  if (isCancelled()) return ending();
  ending_ = std::move(ending);
}

void Transfer::tell() {
  const Progress now = progress();
  if (isCancelled() || now.received == 0 || now == last_) return;
  last_ = now;
  told_(now);
}

}  // namespace fexora
