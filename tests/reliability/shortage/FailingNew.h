// This program's operator new, which fails when told to.
//
// Memory of GLib, expat, ICU and the C library does not come from here.
#pragma once

#include <cstddef>

namespace fexora::test {

// Makes this thread's allocation with this number (the next one is 0) throw std::bad_alloc, and
// with `allLater` those after it, until disarmNew(); or, `ofOthers`, those of all threads but this
// one.
void armNew(std::size_t number, bool allLater, bool ofOthers = false) noexcept;
// The allocations that were asked for since.
std::size_t disarmNew() noexcept;
// Whether one has been refused since.
bool wasRefused() noexcept;

// While one lives, what this thread asks for is granted and not counted: for the test's own needs.
class OwnAllocations {
 public:
  OwnAllocations() noexcept;
  OwnAllocations(const OwnAllocations&) = delete;
  OwnAllocations& operator=(const OwnAllocations&) = delete;
  ~OwnAllocations();
};

}  // namespace fexora::test
