#include "fexora/catalogue/OneSlip.h"

#include <algorithm>
#include <cstddef>

namespace fexora {
namespace {

bool continues(char byte) noexcept {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

std::string_view first(std::string_view text) noexcept {
  std::size_t length = text.empty() ? 0 : 1;
  while (length < text.size() && continues(text[length])) ++length;
  return text.substr(0, length);
}

std::string_view afterFirst(std::string_view text) noexcept {
  return text.substr(first(text).size());
}

// The bytes that both begin with, whole code points only.
std::size_t sharedLength(std::string_view a, std::string_view b) noexcept {
  const std::size_t most = std::min(a.size(), b.size());
  std::size_t length = 0;
  while (length < most && a[length] == b[length]) ++length;
  const auto cuts = [length](std::string_view text) {
    return length < text.size() && continues(text[length]);
  };
  const bool inside = cuts(a) || cuts(b);
  while (inside && length > 0 && continues(a[--length])) continue;
  return length;
}

}  // namespace

bool beginsButForOneSlip(std::string_view word, std::string_view typed) noexcept {
  const std::size_t shared = sharedLength(word, typed);
  word.remove_prefix(shared);
  typed.remove_prefix(shared);
  const std::string_view later = afterFirst(word);
  const std::string_view rest = afterFirst(typed);
  const bool another = later.starts_with(rest);
  const bool tooMany = word.starts_with(rest);
  const bool missing = later.starts_with(typed);
  const bool swapped = !later.empty() && first(typed) == first(later) &&
                       first(rest) == first(word) &&
                       afterFirst(later).starts_with(afterFirst(rest));
  return another || tooMany || missing || swapped;
}

}  // namespace fexora
