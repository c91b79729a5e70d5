// What text a property list can carry, in either encoding.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

// Whether `text` is UTF-8 and holds nothing that XML 1.0 cannot express: no control character but
// tab, line feed and carriage return, and neither U+FFFE nor U+FFFF.
FEXORA_API bool isPlistText(std::string_view text) noexcept;

// How many bytes at the head of `text` stand in XML as they are, as far as can be told by each
// byte: printable ASCII but "&", "<" and ">". Nearly all texts, codes and keys, are such as a
// whole.
inline std::size_t plainLength(std::string_view text) noexcept {
  std::size_t length = 0;
  while (length < text.size() && text[length] >= ' ' && text[length] <= '~' &&
         text[length] != '&' && text[length] != '<' && text[length] != '>') {
    ++length;
  }
  return length;
}

// Whether it also stands in XML as it is: without a sign that XML would read as something else, and
// without a carriage return.
FEXORA_API bool isUnescapedPlistText(std::string_view text) noexcept;

// `text` without XML's white space at both ends.
std::string_view trimmedOfSpace(std::string_view text) noexcept;
// Whether there is nothing else than XML's white space.
bool isSpace(std::string_view text) noexcept;

// `name` fit for a one-line message: at most 60 bytes, printable ASCII, anything else as "?".
std::string printableName(std::string_view name);

}  // namespace fexora
