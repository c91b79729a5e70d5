#include "tests/reliability/shortage/FailingNew.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace fexora::test {
namespace {

struct State {
  bool isArmed = false;
  bool fromThenOn = false;
  std::size_t first = 0;
  std::size_t count = 0;
};

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)
thread_local State state;
thread_local bool isOther = true;
std::atomic<bool> othersAreArmed = false;
std::atomic<bool> othersFromThenOn = false;
std::atomic<std::size_t> othersFirst = 0;
std::atomic<std::size_t> othersCount = 0;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

bool isOtherRefused() noexcept {
  if (!isOther || !othersAreArmed) return false;
  const std::size_t number = othersCount++;
  return number == othersFirst || (othersFromThenOn && number > othersFirst);
}

}  // namespace

bool isRefused() noexcept {
  if (!state.isArmed) return isOtherRefused();
  const std::size_t number = state.count++;
  return number == state.first || (state.fromThenOn && number > state.first);
}

void armNew(std::size_t number, bool fromThenOn) noexcept {
  state = {true, fromThenOn, number, 0};
}

std::size_t disarmNew() noexcept {
  state.isArmed = false;
  return state.count;
}

void armOthers(std::size_t number, bool fromThenOn) noexcept {
  isOther = false;
  othersCount = 0;
  othersFirst = number;
  othersFromThenOn = fromThenOn;
  othersAreArmed = true;
}

std::size_t disarmOthers() noexcept {
  othersAreArmed = false;
  return othersCount;
}

bool othersWereRefused() noexcept {
  return othersCount > othersFirst;
}

OwnAllocations::OwnAllocations() noexcept : wasArmed_(state.isArmed) {
  state.isArmed = false;
}

OwnAllocations::~OwnAllocations() {
  state.isArmed = wasArmed_;
}

void* allocate(std::size_t size) {
  if (isRefused()) throw std::bad_alloc();
  void* const memory = std::malloc(size != 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace fexora::test

// The other forms without alignment come down to these.
void* operator new(std::size_t size) {
  return fexora::test::allocate(size);
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
