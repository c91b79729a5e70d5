#include "fexora/catalogue/NameWords.h"

#include <algorithm>
#include <cstddef>

namespace fexora {
namespace {

bool isWordByte(char byte) noexcept {
  const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
  return letter || (byte >= '0' && byte <= '9') || static_cast<unsigned char>(byte) >= 0x80;
}

// The bytes of a mark at the head of `text`, of which `joins` tells whether it stands inside of a
// word (the apostrophe, the okina); 0 for anything else.
std::size_t markLength(std::string_view text, bool& joins) noexcept {
  if (isWordByte(text[0]) && text[0] != '\xCA' && text[0] != '\xE2') return 0;
  // U+2000 to U+203F hold dashes, quotation marks and blanks.
  const bool general = text.starts_with("\u2019") || text.substr(0, 2) == "\xE2\x80";
  const bool modifier = text.starts_with("\u02BB") || text.starts_with("\u02BC");
  joins = modifier || text[0] == '\'' || text.starts_with("\u2018") || text.starts_with("\u2019");
  if (modifier) return 2;
  if (general) return std::min(text.size(), std::size_t{3});
  return isWordByte(text[0]) ? 0 : 1;
}

}  // namespace

std::string nameWords(std::string_view folded) {
  std::string words;
  bool parted = false;
  while (!folded.empty()) {
    bool joins = false;
    const std::size_t mark = markLength(folded, joins);
    if (mark == 0) {
      if (parted && !words.empty()) words += ' ';
      words += folded[0];
    }
    parted = mark != 0 && (parted || !joins);
    folded.remove_prefix(std::max(mark, std::size_t{1}));
  }
  return words;
}

}  // namespace fexora
