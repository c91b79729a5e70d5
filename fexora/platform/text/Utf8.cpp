#include "fexora/platform/text/Utf8.h"

#include <algorithm>

namespace fexora {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

unsigned byteAt(std::string_view text, std::size_t at) noexcept {
  return static_cast<unsigned char>(text[at]);
}

bool isSurrogate(char32_t unit) noexcept {
  return unit >= 0xD800 && unit <= 0xDFFF;
}

char32_t unitAt(std::string_view bytes, std::size_t at) noexcept {
  return byteAt(bytes, at) << 8U | byteAt(bytes, at + 1);
}

void append(std::string& out, char32_t bits) {
  out += static_cast<char>(bits);
}

}  // namespace

std::size_t utf8Length(std::string_view text) noexcept {
  if (text.empty()) return 0;
  const unsigned lead = byteAt(text, 0);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(text, i) & 0xC0U) != 0x80) return 0;
  }
  const unsigned second = byteAt(text, 1);
  const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool beyond = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
  return overlong || beyond ? 0 : length;
}

char32_t codePoint(std::string_view text) noexcept {
  const std::size_t length = utf8Length(text);
  if (length == 0) return kReplacement;
  if (length == 1) return byteAt(text, 0);
  // The lead byte has as many high bits set as there are bytes, and a zero after them.
  char32_t point = byteAt(text, 0) & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) point = point << 6U | (byteAt(text, i) & 0x3FU);
  return point;
}

std::string wellFormedUtf8(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = utf8Length(text);
    if (length == 0) appendUtf8(out, kReplacement);
    out.append(text.substr(0, length));
    text.remove_prefix(std::max(length, std::size_t{1}));
  }
  return out;
}

void appendUtf8(std::string& out, char32_t codePoint) {
  if (isSurrogate(codePoint) || codePoint > 0x10FFFF) codePoint = kReplacement;
  if (codePoint < 0x80) return append(out, codePoint);
  if (codePoint < 0x800) {
    append(out, 0xC0U | codePoint >> 6U);
  } else {
    if (codePoint < 0x10000) {
      append(out, 0xE0U | codePoint >> 12U);
    } else {
      append(out, 0xF0U | codePoint >> 18U);
      append(out, 0x80U | (codePoint >> 12U & 0x3FU));
    }
    append(out, 0x80U | (codePoint >> 6U & 0x3FU));
  }
  append(out, 0x80U | (codePoint & 0x3FU));
}

bool utf8FromUtf16(std::string_view bytes, std::string& out) {
  if (bytes.size() % 2 != 0) return false;
  out.reserve(out.size() + bytes.size());
  for (std::size_t at = 0; at < bytes.size(); at += 2) {
    char32_t unit = unitAt(bytes, at);
    if (isSurrogate(unit)) {
      if (unit >= 0xDC00 || at + 4 > bytes.size()) return false;
      at += 2;
      const char32_t low = unitAt(bytes, at);
      if (low < 0xDC00 || low > 0xDFFF) return false;
      unit = 0x10000 + ((unit - 0xD800) << 10U) + (low - 0xDC00);
    }
    appendUtf8(out, unit);
  }
  return true;
}

}  // namespace fexora
