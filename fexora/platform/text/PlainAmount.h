// The number in what most people type: digits, perhaps one mark and more digits, fifteen in all at
// most. Exact, and without any locale: what the mark means is for the caller to say.
// Any thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace fexora {

struct PlainAmount {
  // With the mark as decimal mark, and without it.
  double value;
  double digits;
  // Digits before the mark, or all; and after it, where there is one.
  std::size_t whole;
  std::size_t fraction;

  bool hasMark() const noexcept { return fraction > 0; }
};

// Nothing for any other text; the empty one is a zero without digits.
inline std::optional<PlainAmount> plainAmount(std::string_view text) noexcept {
  // Up to 10^22 a power of ten is exact in a double, and so is a whole number of fifteen digits:
  // their quotient is the double nearest to the decimal number.
  constexpr std::size_t kExactDigits = 15;
  constexpr std::array<double, kExactDigits + 1> kPowersOfTen = {
      1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  if (text.size() > kExactDigits + 1) return std::nullopt;
  std::int64_t digits = 0;
  std::size_t mark = text.size();
  for (std::size_t i = 0; i < text.size(); ++i) {
    const unsigned digit = static_cast<unsigned char>(text[i]) - unsigned{'0'};
    if (digit <= 9) {
      digits = digits * 10 + digit;
    } else if ((text[i] == '.' || text[i] == ',') && mark == text.size()) {
      mark = i;
    } else {
      return std::nullopt;
    }
  }
  const bool hasMark = mark != text.size();
  // Locales differ on a mark without digits on both of its sides; and sixteen digits are too many.
  if (hasMark ? mark == 0 || mark + 1 == text.size() : text.size() > kExactDigits) {
    return std::nullopt;
  }
  const std::size_t fraction = hasMark ? text.size() - mark - 1 : 0;
  const auto whole = static_cast<double>(digits);
  return PlainAmount{whole / kPowersOfTen[fraction], whole, mark, fraction};
}

}  // namespace fexora
