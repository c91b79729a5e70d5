// The Text operations by ASCII rules alone: exact for ASCII text; for any other text the answer of
// a system without Unicode data (letters beyond ASCII keep their case, each code point is one
// character, only equal bytes are equal). CR LF is one character.
// Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/platform/text/AsciiCase.h"

namespace fexora::ascii {

std::size_t characterCount(std::string_view text) noexcept;
std::vector<std::size_t> characterEnds(std::string_view text);
bool contains(std::string_view whole, std::string_view part) noexcept;

}  // namespace fexora::ascii
