// A known text at the head of another. Any thread.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace fexora {

// Takes `expected` off the head of `rest`; false, with `rest` as it was, when something else stands
// there. Compared in place, without a call.
template <std::size_t Size>
bool takeLiteral(std::string_view& rest, const char (&expected)[Size]) noexcept {
  constexpr std::size_t kLength = Size - 1;
  if (rest.size() < kLength || std::memcmp(rest.data(), expected, kLength) != 0) return false;
  rest.remove_prefix(kLength);
  return true;
}

// The same of a text whose length is not known before.
inline bool takeText(std::string_view& rest, std::string_view expected) noexcept {
  if (rest.size() < expected.size() ||
      std::memcmp(rest.data(), expected.data(), expected.size()) != 0) {
    return false;
  }
  rest.remove_prefix(expected.size());
  return true;
}

}  // namespace fexora
