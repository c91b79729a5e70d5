// Typing that went wrong once. Any thread.
#pragma once

#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

// Whether `word` would begin with `typed` but for one letter (code point) that is missing, too
// many, another one, or has changed places with the next. Both are well-formed UTF-8.
FEXORA_API bool beginsButForOneSlip(std::string_view word, std::string_view typed) noexcept;

}  // namespace fexora
