#include "programs/shared/JsonText.h"

#include <cmath>

#include "fexora/platform/text/NumberText.h"
#include "fexora/platform/text/Utf8.h"

namespace fexora::program {

void JsonText::separate() {
  if (!first_) text_ += ',';
  first_ = false;
}

JsonText& JsonText::open(char bracket) {
  separate();
  text_ += bracket;
  first_ = true;
  return *this;
}

JsonText& JsonText::close(char bracket) {
  text_ += bracket;
  first_ = false;
  return *this;
}

JsonText& JsonText::raw(std::string_view value) {
  separate();
  text_ += value;
  return *this;
}

JsonText& JsonText::key(std::string_view name) {
  separate();
  quote(name);
  text_ += ':';
  first_ = true;
  return *this;
}

JsonText& JsonText::string(std::string_view value) {
  separate();
  quote(value);
  return *this;
}

JsonText& JsonText::number(double value) {
  if (!std::isfinite(value)) return null();
  std::string text = shortestText(value);
  // Many a reader, our publisher's own among them, rejects a whole number beyond 64 bits.
  constexpr double kBeyond = 0x1p63;
  if (std::abs(value) >= kBeyond && text.find_first_of(".e") == std::string::npos) text += "e0";
  return raw(text);
}

JsonText& JsonText::integer(std::int64_t value) {
  return raw(integerText(value));
}

JsonText& JsonText::stringOrNull(const std::optional<std::string>& value) {
  return value ? string(*value) : null();
}

JsonText& JsonText::numberOrNull(const std::optional<double>& value) {
  return value ? number(*value) : null();
}

void JsonText::quote(std::string_view value) {
  constexpr std::string_view kHex = "0123456789abcdef";
  text_ += '"';
  for (const char c : wellFormedUtf8(value)) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      text_ += '\\';
      text_ += c;
    } else if (byte < 0x20 || byte == 0x7F) {
      text_ += "\\u00";
      text_ += kHex[byte >> 4U];
      text_ += kHex[byte & 0xFU];
    } else {
      text_ += c;
    }
  }
  text_ += '"';
}

}  // namespace fexora::program
