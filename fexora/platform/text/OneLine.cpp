#include "fexora/platform/text/OneLine.h"

#include <algorithm>

#include "fexora/platform/text/Utf8.h"

namespace fexora {
namespace {

constexpr std::string_view kCut = "\u2026";
constexpr char32_t kNoCharacter = 0xFFFD;

bool isWithin(char32_t point, char32_t first, char32_t last) noexcept {
  return point >= first && point <= last;
}

// Nothing is left out: a code with such a character in it must not become another code.
char32_t shown(char32_t point) noexcept {
  const bool isControl = point < 0x20 || isWithin(point, 0x7F, 0x9F);
  // Separators and directions; isolates.
  if (isControl || isWithin(point, 0x2028, 0x202E) || isWithin(point, 0x2066, 0x2069)) return ' ';
  const bool isNone = (point & 0xFFFEU) == 0xFFFE || isWithin(point, 0xFDD0, 0xFDEF);
  return isNone ? kNoCharacter : point;
}

bool isPrintableAscii(std::string_view text) noexcept {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace

std::string oneLine(std::string_view text, std::size_t most) {
  std::string line;
  for (std::size_t characters = 1; !text.empty() && characters <= most; ++characters) {
    const std::size_t length = std::max(utf8Length(text), std::size_t{1});
    if (characters == most && text.size() > length) {
      line += kCut;
      break;
    }
    appendUtf8(line, shown(codePoint(text)));
    text.remove_prefix(length);
  }
  return line;
}

void makeOneLine(std::string& text, std::size_t most) {
  if (text.size() > most || !isPrintableAscii(text)) text = oneLine(text, most);
}

}  // namespace fexora
