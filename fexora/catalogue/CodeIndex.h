// Where each code stands first in a list of currencies.
//
// Codes are compared in their canonical form, case counts. A look-up takes the same time for any
// size and needs no memory where the code is ASCII. Nothing is copied of codes that are their own
// canonical form, as all are that are in use: the list is the caller's, outlives this, and must
// stay as it was when this was made. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/catalogue/Currency.h"

namespace fexora {

class Text;

class CodeIndex {
 public:
  static constexpr std::uint32_t kNoPlace = UINT32_MAX;

  // May throw std::bad_alloc, as may the look-up.
  CodeIndex(const std::vector<CurrencyRef>& list, Text& text);

  // kNoPlace where none of the list has the code.
  std::uint32_t placeOf(std::string_view code, Text& text) const;
  // How many different codes there are.
  std::size_t count() const noexcept { return count_; }

 private:
  // The slot that holds the canonical code, or the free one that it would be in.
  std::size_t slotOf(std::string_view canonical) const;
  std::string_view codeAt(std::uint32_t place) const;

  const std::vector<CurrencyRef>& list_;
  // Of each place, where one of the list's codes is not its own; else empty.
  std::vector<std::string> canonical_;
  std::vector<std::uint32_t> slots_;  // places, at most half of them taken
  std::size_t count_ = 0;
  std::size_t longest_ = 0;  // in bytes
};

}  // namespace fexora
