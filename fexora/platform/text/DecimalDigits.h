// The decimal digits of all scripts: the characters of Unicode's general category Nd, version 16.
// Any thread.
#pragma once

#include <optional>

#include "fexora/platform/base/Export.h"

namespace fexora {

// 0 to 9; nothing for what is no decimal digit (as are Ⅳ, ½ and 四).
FEXORA_API std::optional<int> decimalDigit(char32_t character) noexcept;

}  // namespace fexora
