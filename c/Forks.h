// Tells a process from the one that it was forked from: descriptors, locks and threads of a session
// are the parent's.
#pragma once

#include <cstdint>

namespace fexora::c {

// Another number in each process, at no cost; changes in the child of fork(). Any thread.
std::uint64_t processGeneration() noexcept;

}  // namespace fexora::c
