#include "tests/reliability/shortage/FailingNew.h"

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

thread_local State state;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

bool isRefused() noexcept {
  if (!state.isArmed) return false;
  const std::size_t number = state.count++;
  return number == state.first || (state.fromThenOn && number > state.first);
}

}  // namespace

void armNew(std::size_t number, bool fromThenOn) noexcept {
  state = {true, fromThenOn, number, 0};
}

std::size_t disarmNew() noexcept {
  state.isArmed = false;
  return state.count;
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

// The other forms of new without alignment come down to these two.
void* operator new(std::size_t size) {
  return fexora::test::allocate(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}
