// Holds a value that is made on first use and never destroyed: for what lives to the end of the
// process, since no timer, watch or other thread may meet a half-destroyed global at exit.
// Use as a function's static variable, whose creation the language guards.
#pragma once

#include <new>
#include <utility>

namespace fexora {

template <class T>
class NoDestructor {
 public:
  template <class... Arguments>
  explicit NoDestructor(Arguments&&... arguments) {
    new (storage_) T(std::forward<Arguments>(arguments)...);
  }
  NoDestructor(const NoDestructor&) = delete;
  NoDestructor& operator=(const NoDestructor&) = delete;

  T& operator*() noexcept { return *std::launder(reinterpret_cast<T*>(storage_)); }
  T* operator->() noexcept { return &**this; }
  const T& operator*() const noexcept {
    return *std::launder(reinterpret_cast<const T*>(storage_));
  }

 private:
  alignas(T) unsigned char storage_[sizeof(T)];
};

}  // namespace fexora
