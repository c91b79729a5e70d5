#include "tests/reliability/shortage/FailingNew.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace fexora::test {
namespace {

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<bool> isArmed = false;
std::atomic<bool> fromThenOn = false;
std::atomic<bool> areOthersMeant = false;
std::atomic<std::size_t> first = 0;
std::atomic<std::size_t> count = 0;
thread_local bool isArming = false;
thread_local int grants = 0;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

bool isRefused() noexcept {
  if (!isArmed || areOthersMeant == isArming || grants > 0) return false;
  const std::size_t number = count++;
  return number == first || (fromThenOn && number > first);
}

}  // namespace

void armNew(std::size_t number, bool allLater, bool ofOthers) noexcept {
  isArming = true;
  areOthersMeant = ofOthers;
  first = number;
  fromThenOn = allLater;
  count = 0;
  isArmed = true;
}
std::size_t disarmNew() noexcept {
  isArmed = false;
  return count;
}
bool wasRefused() noexcept {
  return count > first;
}

OwnAllocations::OwnAllocations() noexcept {
  ++grants;
}
OwnAllocations::~OwnAllocations() {
  --grants;
}

}  // namespace fexora::test

// The other forms without alignment come down to these.
void* operator new(std::size_t size) {
  void* const memory = fexora::test::isRefused() ? nullptr : std::malloc(size != 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return fexora::test::isRefused() ? nullptr : std::malloc(size != 0 ? size : 1);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}
