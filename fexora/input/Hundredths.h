// Prices in hundredths of a currency, as exchanges and people quote them. Any thread.
#pragma once

#include <optional>
#include <string_view>

namespace fexora {

inline constexpr double kHundredth = 0.01;

// The currency of GBp, GBX, ZAc and ILA; in any case, but for GBp, which is told from GBP by it.
std::optional<std::string_view> hundredthsOf(std::string_view word) noexcept;

// For a word for coins ("cents", "pence", in our languages) the only currency that has them, or an
// empty text where that is for another word to say; nothing for any other word. `word` is folded.
std::optional<std::string_view> coinsOf(std::string_view word) noexcept;

}  // namespace fexora
