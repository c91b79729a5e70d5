// What readers of published texts have in common.
#pragma once

#include <string>
#include <string_view>

namespace fexora::sources {

// May stand before a text in UTF-8, and means nothing.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// A code as it is written: its ASCII letters in upper case.
inline std::string upperCase(std::string_view code) {
  std::string upper(code);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

}  // namespace fexora::sources
