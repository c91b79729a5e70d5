#include "fexora/platform/loop/WakeUp.h"

#include <cstdint>

#include <sys/eventfd.h>
#include <unistd.h>

namespace fexora {

WakeUp::WakeUp() : descriptor_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

WakeUp::~WakeUp() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

void WakeUp::wake() const noexcept {
  // A full counter means that a wake-up is already on its way.
  const std::uint64_t one = 1;
  if (descriptor_ >= 0) [[maybe_unused]]
    const ssize_t written = ::write(descriptor_, &one, sizeof one);
}

void WakeUp::clear() const noexcept {
  std::uint64_t count = 0;
  if (descriptor_ >= 0) [[maybe_unused]]
    const ssize_t got = ::read(descriptor_, &count, sizeof count);
}

}  // namespace fexora
