#include "fexora/platform/text/Text.h"

#include <cstdint>
#include <cstring>

namespace fexora {

Text::~Text() = default;

bool equalText(Text& text, std::string_view a, std::string_view b) {
  if (a == b) return true;
  // One of them in ASCII says nothing: U+212A, the Kelvin sign, is canonically the letter K.
  if (isAscii(a) && isAscii(b)) return false;
  return text.canonical(a) == text.canonical(b);
}

bool isAscii(std::string_view text) noexcept {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  while (text.size() >= sizeof(std::uint64_t)) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data(), sizeof(word));
    if ((word & kHighBits) != 0) return false;
    text.remove_prefix(sizeof(word));
  }
  for (const char c : text) {
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  }
  return true;
}

}  // namespace fexora
