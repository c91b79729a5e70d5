#include "fexora/platform/plist/Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include "fexora/platform/plist/PlistText.h"

namespace fexora {
namespace {

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t kNoDigit = 0xFF;

constexpr std::array<std::uint8_t, 256> digitValues() {
  std::array<std::uint8_t, 256> values{};
  for (auto& value : values) value = kNoDigit;
  for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
    values[static_cast<std::uint8_t>(kAlphabet[i])] = static_cast<std::uint8_t>(i);
  }
  return values;
}
constexpr std::array<std::uint8_t, 256> kValues = digitValues();

}  // namespace

void appendBase64(std::string& out, const Data& bytes) {
  std::uint32_t bits = 0;
  unsigned count = 0;  // bits held, below 6 between bytes
  for (const std::uint8_t byte : bytes) {
    bits = (bits << 8U) | byte;
    for (count += 8; count >= 6; count -= 6) out += kAlphabet[(bits >> (count - 6)) & 0x3FU];
  }
  if (count > 0) out += kAlphabet[(bits << (6 - count)) & 0x3FU];
  out.append((3 - bytes.size() % 3) % 3, '=');
}

std::optional<Data> parseBase64(std::string_view text) {
  Data out;
  out.reserve(text.size() / 4 * 3);
  std::uint32_t bits = 0;
  std::size_t digits = 0;
  std::size_t padding = 0;
  for (const char c : text) {
    if (isSpace({&c, 1})) continue;
    if (c == '=') {
      ++padding;
      continue;
    }
    const std::uint8_t value = kValues[static_cast<std::uint8_t>(c)];
    if (value == kNoDigit || padding > 0) return std::nullopt;
    bits = (bits << 6U) | value;
    // Of four digits the first completes no byte, each later one completes one.
    const std::size_t place = digits++ % 4;
    if (place > 0) out.push_back(static_cast<std::uint8_t>((bits >> (6 - 2 * place)) & 0xFFU));
  }
  if (digits % 4 == 1 || padding != (4 - digits % 4) % 4) return std::nullopt;
  return out;
}

}  // namespace fexora
