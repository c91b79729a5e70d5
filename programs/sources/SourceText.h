// What readers of published texts have in common.
#pragma once

#include <string_view>

namespace fexora::sources {

// May stand before a text in UTF-8, and means nothing.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace fexora::sources
