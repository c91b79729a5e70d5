// One cell of a text whose cells end with a mark.
#pragma once

#include <algorithm>
#include <string_view>

namespace fexora {

// Takes the text up to `end`, or all of it, off the head of `text`, and the mark with it.
inline std::string_view takeUntil(std::string_view& text, char end) noexcept {
  const std::string_view taken = text.substr(0, text.find(end));
  text.remove_prefix(std::min(taken.size() + 1, text.size()));
  return taken;
}

}  // namespace fexora
