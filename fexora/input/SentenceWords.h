// The words of a sentence about money that are no currencies: in English and the languages that the
// windows speak. Any thread; nothing is opened for it.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace fexora {

enum class SentenceWord : std::uint8_t {
  none,
  between,  // between source and destinations, or two of these: "in", "and"
  of,       // before a currency or what a share is of: "of", "de"
  lead,     // what a question begins or ends with: "convert", "rate"
};

// `word` in small ASCII letters.
SentenceWord sentenceWord(std::string_view word) noexcept;

// Whether the code or name is a plain word, a program's name or a unit as well, in small letters:
// "try", "top", "link", "gold".
bool isPlainWord(std::string_view word) noexcept;

// Whether it has the length of a code, but the letters of a name: "Sol".
bool isWrittenAsName(std::string_view word) noexcept;

// The grams in a troy ounce, by definition.
inline constexpr double kTroyOunce = 31.1034768;
// The grams in a unit of weight ("g", "kg", "oz"), ounces being troy ones; nothing for any other
// word.
std::optional<double> gramsIn(std::string_view word) noexcept;

}  // namespace fexora
