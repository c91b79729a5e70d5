// What a call came to, and the one edge at which exceptions end.
#pragma once

#include <cstddef>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "fexora/c.h"

namespace fexora::c {

struct Outcome {
  fexora_code code = FEXORA_OK;
  std::string message;  // one line, without a full stop; empty when it went well

  bool isOk() const noexcept { return code == FEXORA_OK; }
};

inline Outcome misuse(std::string message) {
  return {FEXORA_MISUSE, std::move(message)};
}

// As much of the text as fits into `capacity` bytes (1 or more) with its zero, in whole characters.
void putText(std::string_view from, char* text, std::size_t capacity) noexcept;

// Fills `error` (or null) unless the outcome is a success. The code.
int answer(const Outcome& outcome, fexora_error* error) noexcept;
int answer(fexora_code code, const char* message, fexora_error* error) noexcept;

// Runs a call's body, which gives an Outcome.
template <class Body>
int answered(fexora_error* error, Body&& body) noexcept {
  try {
    return answer(std::forward<Body>(body)(), error);
  } catch (const std::bad_alloc&) {
    return answer(FEXORA_NO_MEMORY, "out of memory", error);
  } catch (...) {
    return answer(FEXORA_INTERNAL, "the library failed", error);
  }
}

}  // namespace fexora::c
