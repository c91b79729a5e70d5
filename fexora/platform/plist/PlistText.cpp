#include "fexora/platform/plist/PlistText.h"

#include <cstddef>
#include <cstdint>

namespace fexora {
namespace {

constexpr std::string_view kSpace = " \t\n\r";
constexpr std::size_t kNameBytes = 60;

std::uint8_t byteAt(std::string_view text, std::size_t i) noexcept {
  return i < text.size() ? static_cast<std::uint8_t>(text[i]) : std::uint8_t{0};
}

bool isTail(std::uint8_t byte) noexcept {
  return (byte & 0xC0U) == 0x80U;
}

bool isAllowedAscii(std::uint8_t byte) noexcept {
  return byte >= 0x20 || byte == '\t' || byte == '\n' || byte == '\r';
}

// The second byte's range decides on overlong forms, surrogates and the end of Unicode
// (The Unicode Standard, table 3-7).
bool isSecondByte(std::uint8_t first, std::uint8_t second) noexcept {
  switch (first) {
    case 0xE0:
      return second >= 0xA0 && second <= 0xBF;
    case 0xED:
      return second >= 0x80 && second <= 0x9F;
    case 0xF0:
      return second >= 0x90 && second <= 0xBF;
    case 0xF4:
      return second >= 0x80 && second <= 0x8F;
    default:
      return isTail(second);
  }
}

// Bytes of the allowed character other than ASCII at `i`; 0 when there is none.
std::size_t characterBytes(std::string_view text, std::size_t i) noexcept {
  const std::uint8_t first = byteAt(text, i);
  const std::uint8_t second = byteAt(text, i + 1);
  if (first < 0xC2 || first > 0xF4 || !isSecondByte(first, second)) return 0;
  if (first < 0xE0) return 2;
  const std::uint8_t third = byteAt(text, i + 2);
  if (!isTail(third)) return 0;
  if (first < 0xF0) return first == 0xEF && second == 0xBF && third >= 0xBE ? 0 : 3;
  return isTail(byteAt(text, i + 3)) ? 4 : 0;
}

}  // namespace

bool isPlistText(std::string_view text) noexcept {
  for (std::size_t i = 0; i < text.size();) {
    const std::uint8_t byte = byteAt(text, i);
    if (byte < 0x80) {
      if (!isAllowedAscii(byte)) return false;
      ++i;
      continue;
    }
    const std::size_t length = characterBytes(text, i);
    if (length == 0) return false;
    i += length;
  }
  return true;
}

std::string_view trimmedOfSpace(std::string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(kSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

bool isSpace(std::string_view text) noexcept {
  return text.find_first_not_of(kSpace) == std::string_view::npos;
}

std::string printableName(std::string_view name) {
  std::string out(name.substr(0, kNameBytes));
  for (char& c : out) {
    if (c < 0x20 || c > 0x7E) c = '?';
  }
  if (name.size() > kNameBytes) out += "...";
  return out;
}

}  // namespace fexora
