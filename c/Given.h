// How values go into what the caller brought: structs of his size, lists and texts of his length.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <vector>

#include "c/Outcome.h"

namespace fexora::c {

// The fields that the caller's struct has room for; what it has beyond ours becomes zero.
template <class Struct>
Outcome give(const Struct& from, Struct* to, std::size_t size) {
  static_assert(std::is_trivially_copyable_v<Struct>);
  if (to == nullptr || size == 0) return misuse("no room for the struct");
  std::memcpy(static_cast<void*>(to), &from, std::min(size, sizeof from));
  if (size > sizeof from) {
    std::memset(reinterpret_cast<char*>(to) + sizeof from, 0, size - sizeof from);
  }
  return {};
}

// The first `capacity` of a list, and how many there are.
Outcome giveCodes(const std::vector<const char*>& from, const char** codes, std::size_t capacity,
                  std::size_t* count);

// As much of a text as fits with its zero, in whole characters, and how long it is.
Outcome giveText(std::string_view from, char* text, std::size_t capacity, std::size_t* length);

// The same text to the end of the process, with a zero at its end; one for all that are equal. Any
// thread.
const char* kept(std::string_view text);

}  // namespace fexora::c
