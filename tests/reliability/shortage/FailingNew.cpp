#include "tests/reliability/shortage/FailingNew.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace fexora::test {
namespace {

enum class Armed : std::uint8_t { none, thisThread, others };

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<Armed> armed = Armed::none;
std::atomic<bool> fromThenOn = false;
std::atomic<std::size_t> first = 0;
std::atomic<std::size_t> count = 0;
thread_local bool isArming = false;
thread_local int grants = 0;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

void arm(Armed whom, std::size_t number, bool allLater) noexcept {
  isArming = true;
  first = number;
  fromThenOn = allLater;
  count = 0;
  armed = whom;
}

std::size_t disarm() noexcept {
  armed = Armed::none;
  return count;
}

bool isRefused() noexcept {
  const Armed whom = armed;
  if (whom == Armed::none || (whom == Armed::thisThread) != isArming || grants > 0) return false;
  const std::size_t number = count++;
  return number == first || (fromThenOn && number > first);
}

}  // namespace

void armNew(std::size_t number, bool allLater) noexcept {
  arm(Armed::thisThread, number, allLater);
}
std::size_t disarmNew() noexcept {
  return disarm();
}
void armOthers(std::size_t number, bool allLater) noexcept {
  arm(Armed::others, number, allLater);
}
std::size_t disarmOthers() noexcept {
  return disarm();
}
bool othersWereRefused() noexcept {
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
