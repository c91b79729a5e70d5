// Text from outside (a service, a file, another process, a host) fit to be kept, logged and shown.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/base/Limits.h"

namespace fexora {

// The text in one line of at most `most` characters (code points), in well-formed UTF-8. Blanks
// take the place of control characters (C0, DEL and C1), of line and paragraph separators and of
// what overrides, embeds or isolates a direction; U+FFFD that of broken bytes and of
// noncharacters. The last character of a text that was cut is "…". So every file format and every
// terminal can carry it. May throw std::bad_alloc. Any thread.
FEXORA_API std::string oneLine(std::string_view text, std::size_t most = limits::kLineCharacters);

// The same in place. A short text of printable ASCII is left alone, and takes no memory.
FEXORA_API void makeOneLine(std::string& text, std::size_t most = limits::kLineCharacters);

}  // namespace fexora
