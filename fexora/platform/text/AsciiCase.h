// The other case of ASCII letters, whatever the host's locale says; all other bytes stay. Codes of
// currencies are folded by these alone. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace fexora::ascii {

constexpr char upper(char c) noexcept {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr char lower(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline std::string uppercased(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = upper(c);
  return out;
}

inline std::string lowercased(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = lower(c);
  return out;
}

}  // namespace fexora::ascii
