#include "c/Outcome.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "fexora/platform/text/OneLine.h"
#include "fexora/platform/text/Utf8.h"

namespace fexora::c {
namespace {

int fill(fexora_code code, std::string_view message, fexora_error* error) noexcept {
  if (code == FEXORA_OK || error == nullptr) return code;
  error->code = code;
  // It may quote a source or what somebody typed.
  try {
    putText(oneLine(message), error->message, sizeof error->message);
  } catch (...) {
    putText("out of memory", error->message, sizeof error->message);
  }
  return code;
}

}  // namespace

void putText(std::string_view from, char* text, std::size_t capacity) noexcept {
  std::size_t length = 0;
  while (length < from.size()) {
    const std::size_t next = std::max<std::size_t>(utf8Length(from.substr(length)), 1);
    if (length + next >= capacity) break;
    length += next;
  }
  std::memcpy(text, from.data(), length);
  text[length] = '\0';
}

int answer(const Outcome& outcome, fexora_error* error) noexcept {
  return fill(outcome.code, outcome.message, error);
}

int answer(fexora_code code, const char* message, fexora_error* error) noexcept {
  return fill(code, message, error);
}

}  // namespace fexora::c
