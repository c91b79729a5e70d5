// How far one word is from another.
#pragma once

#include <cstddef>
#include <string_view>

namespace fexora::program {

// Insertions, deletions and replacements of one byte and exchanges of two neighbours that turn `a`
// into `b` (the restricted edit distance of Damerau and Levenshtein). Time grows with both lengths.
std::size_t editDistance(std::string_view a, std::string_view b);

}  // namespace fexora::program
