// What readers of published texts have in common.
#pragma once

#include <cstddef>
#include <string_view>

namespace fexora::sources {

// May stand before a text in UTF-8, and means nothing.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// How much of a figure or a day that is none is shown.
inline constexpr std::size_t kShownBytes = 40;

}  // namespace fexora::sources
