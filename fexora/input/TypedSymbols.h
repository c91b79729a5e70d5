// A typed text as the symbols that count in an amount, each with its place: digits of all scripts
// as ASCII ones, forms of one mark as one, and nothing of what is passed over
// (input/TypedAmount.h). Any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace fexora {

struct TypedSymbol {
  char32_t sign;
  std::size_t place;  // its first byte
};
using TypedRun = std::span<const TypedSymbol>;

// The form that stands for `character`; nothing for one that is passed over.
std::optional<char32_t> typedForm(char32_t character) noexcept;

bool isTypedDigit(const TypedSymbol& symbol) noexcept;
// Whether it is a letter, or in any case no sign of money, no punctuation and no operator.
bool isTypedLetter(char32_t character) noexcept;

// Ends before the first byte that is no UTF-8, which `broken` then is.
struct TypedSymbols {
  std::vector<TypedSymbol> symbols;
  std::optional<std::size_t> broken;
};
TypedSymbols typedSymbols(std::string_view text);

// The run without the blanks at its ends, and in UTF-8.
TypedRun trimmed(TypedRun run) noexcept;
std::string spelled(TypedRun run);

}  // namespace fexora
