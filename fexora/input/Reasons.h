// Why a text is no amount or no sentence, where more than one unit says so.
#pragma once

#include <string_view>

namespace fexora {

inline constexpr std::string_view kBroken = "this is no text in UTF-8";
inline constexpr std::string_view kForeign = "this cannot stand within a number";
inline constexpr std::string_view kNumberTooLarge = "this number is too large";
inline constexpr std::string_view kUnbalanced = "this parenthesis has no partner";

}  // namespace fexora
