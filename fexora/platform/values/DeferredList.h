// A list whose elements are made when somebody first asks for them, from what keeps them until
// then, like the bytes of a file that was looked through.
//
// Any thread; several may ask at once. Its elements stay once they are made.
#pragma once

#include <atomic>

#include "fexora/platform/values/Value.h"

namespace fexora {

class FEXORA_API DeferredList {
 public:
  DeferredList() noexcept = default;
  DeferredList(const DeferredList&) = delete;
  DeferredList& operator=(const DeferredList&) = delete;
  virtual ~DeferredList();

  // The elements, as long as this lives; null without memory for them, and then the next call tries
  // again.
  const Array* array() const noexcept;

 protected:
  // Always the same elements. May throw std::bad_alloc only.
  virtual Array makeElements() const = 0;

 private:
  mutable std::atomic<const Array*> made_ = nullptr;
};

}  // namespace fexora
