#include "fexora/platform/plist/PlistText.h"

#include <cstddef>
#include <cstdint>

#include "fexora/platform/text/Utf8.h"

namespace fexora {
namespace {

constexpr std::string_view kSpace = " \t\n\r";
constexpr std::size_t kNameBytes = 60;

bool isAllowed(std::string_view character) noexcept {
  if (character.size() != 1) return character != "\xEF\xBF\xBE" && character != "\xEF\xBF\xBF";
  const auto byte = static_cast<std::uint8_t>(character.front());
  return byte >= 0x20 || byte == '\t' || byte == '\n' || byte == '\r';
}

}  // namespace

bool isPlistText(std::string_view text) noexcept {
  while (!text.empty()) {
    // Most texts are codes and numbers.
    const bool isAscii = static_cast<std::uint8_t>(text.front()) < 0x80;
    const std::size_t length = isAscii ? 1 : utf8Length(text);
    if (length == 0 || !isAllowed(text.substr(0, length))) return false;
    text.remove_prefix(length);
  }
  return true;
}

bool isUnescapedPlistText(std::string_view text) noexcept {
  return plainLength(text) == text.size() ||
         (text.find_first_of("&<>\r") == std::string_view::npos && isPlistText(text));
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
