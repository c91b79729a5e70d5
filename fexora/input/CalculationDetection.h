// Whether a typed text is or holds an arithmetic operator. The operators are the ASCII signs "+",
// "-", "*" and "/" only; nothing here evaluates them.
// Any thread.
#pragma once

#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

// True when an operator stands anywhere in the text: a leading minus sign counts, an operator that
// a combining mark has made part of another character does not.
FEXORA_API bool hasCalculation(std::string_view text);

// True when the whole text is one operator.
FEXORA_API bool isCalcOperation(std::string_view text) noexcept;

}  // namespace fexora
