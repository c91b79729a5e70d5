// UTF-8, checked and made. Any thread.
#pragma once

#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

// Whether the text is well-formed: no overlong form, no surrogate, nothing beyond U+10FFFF.
FEXORA_API bool isUtf8(std::string_view text) noexcept;

// The text with each byte that belongs to no well-formed sequence as U+FFFD.
FEXORA_API std::string wellFormedUtf8(std::string_view text);

// Appends one code point; U+FFFD for one that has no UTF-8 form.
FEXORA_API void appendUtf8(std::string& out, char32_t codePoint);

// The UTF-16 text in `bytes` as UTF-8; false for a half unit or a surrogate without its partner.
FEXORA_API bool utf8FromUtf16(std::string_view bytes, bool bigEndian, std::string& out);

}  // namespace fexora
