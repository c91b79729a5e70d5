// UTF-8, checked and made. Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

// The bytes of the well-formed sequence at the head of the text, which is no overlong form, no
// surrogate and nothing beyond U+10FFFF (The Unicode Standard, table 3-7); 0 when there is none.
FEXORA_API std::size_t utf8Length(std::string_view text) noexcept;

// The code point of that sequence; U+FFFD when there is none.
FEXORA_API char32_t codePoint(std::string_view text) noexcept;

// The text with each byte that belongs to no well-formed sequence as U+FFFD.
FEXORA_API std::string wellFormedUtf8(std::string_view text);

// Appends one code point; U+FFFD for one that has no UTF-8 form.
FEXORA_API void appendUtf8(std::string& out, char32_t codePoint);

// Appends the big-endian UTF-16 text in `bytes`; false for a half unit or a surrogate without its
// partner.
FEXORA_API bool utf8FromUtf16(std::string_view bytes, std::string& out);

}  // namespace fexora
