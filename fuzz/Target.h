// What every fuzz target is made of: the entry that libFuzzer and Replay.cpp call, a way to split
// its input, and the check that ends the process when the product breaks a promise.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

// Runs the product on one input. Gives 0; ends the process on a broken promise.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fexora::fuzz {

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Takes the first line off `rest`, without its end; all of it when there is no further line.
inline std::string_view takeLine(std::string_view& rest) {
  const auto end = rest.find('\n');
  const auto line = rest.substr(0, end);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  return line;
}

// A small number, negative ones among them, that a seed can show as a digit; nothing for a blank
// or no character.
inline int smallNumber(std::string_view text, int otherwise) {
  return text.empty() || text[0] == ' ' ? otherwise : static_cast<signed char>(text[0]) - '0';
}

inline void require(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "broken promise: %s\n", promise);
  std::abort();
}

}  // namespace fexora::fuzz
