// A currency's code in a table that is part of the library: the text itself, where a pointer would
// have to be adjusted in each process that loads the library.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace fexora {

class TableCode {
 public:
  static constexpr std::size_t kLongest = 7;

  // NOLINTBEGIN(google-explicit-constructor): a code stands wherever its text does.
  template <std::size_t Size>
  requires(Size <= kLongest + 1) constexpr TableCode(const char (&code)[Size]) noexcept {
    std::copy_n(code, Size, text_.begin());
  }
  constexpr operator std::string_view() const noexcept { return text_.data(); }
  // NOLINTEND(google-explicit-constructor)

 private:
  std::array<char, kLongest + 1> text_{};  // with a NUL behind it
};

}  // namespace fexora
