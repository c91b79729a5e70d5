// Brings memory in that is about to be written from end to end: all of its pages in one call of the
// kernel's, where each would be brought in by itself at its first touch, which costs a virtual
// machine ten times as much. What stands there stays. Only whole pages; where the kernel cannot,
// nothing happens. Any thread.
#pragma once

#include <cstddef>

namespace fexora {

void bringIn(void* memory, std::size_t bytes) noexcept;

}  // namespace fexora
