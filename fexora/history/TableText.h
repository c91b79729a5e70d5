// The figures of a published table as the one text that is kept of them: "\nGBP 0.85815\nJPY
// 178.56\n", lines by code, each figure as it was printed.
//
// Any thread. What takes memory may throw std::bad_alloc.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "fexora/history/PublishedTable.h"

namespace fexora {

// 1 to 32 letters and digits of ASCII, as the codes of the rates' sources are.
FEXORA_API bool isTableCode(std::string_view text) noexcept;
// At most 64 characters with one value that is finite and above zero, as its reciprocal is: digits
// with a point and an exponent perhaps, no sign before them.
FEXORA_API bool isFigure(std::string_view text) noexcept;

// Sorts the figures, of two with one code the first, and leaves the base out. Empty for none.
FEXORA_API std::string tableText(const PublishedTable& table);
// The other way. A line that is none of tableText's is passed over.
FEXORA_API void readTableText(std::string_view text, PublishedTable& into);

// How many figures a text of tableText's has.
FEXORA_API std::size_t countFigures(std::string_view text) noexcept;

// The figure of a code, or an empty text: looked for by halving, so in a text of tableText's alone.
FEXORA_API std::string_view figureOf(std::string_view text, std::string_view code) noexcept;

// What is wrong with a table that is to be kept, as one line for people; empty: nothing.
FEXORA_API std::string tableFault(const PublishedTable& table);

}  // namespace fexora
