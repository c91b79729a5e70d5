#include "fexora/platform/values/DeferredList.h"

#include <memory>
#include <new>

namespace fexora {

DeferredList::~DeferredList() {
  delete made_.load(std::memory_order_acquire);
}

const Array* DeferredList::array() const noexcept try {
  if (const Array* made = made_.load(std::memory_order_acquire)) return made;
  auto mine = std::make_unique<const Array>(makeElements());
  const Array* first = nullptr;
  // Of two that made them at once the first one's stay.
  if (!made_.compare_exchange_strong(first, mine.get(), std::memory_order_acq_rel)) return first;
  return mine.release();
} catch (const std::bad_alloc&) {
  return nullptr;
}

}  // namespace fexora
