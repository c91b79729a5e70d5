// One pass over a JSON text, as far as its values must be counted and its numbers fit.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace fexora {

struct JsonScan {
  std::size_t values = 0;  // keys not counted
  std::string text;        // with numbers that a parser of 64-bit types can hold
};

// A whole number beyond 64 bits becomes a real, one beyond the doubles a text, so that one odd
// field does not cost the others. All else stays as it is, faults too: a text is JSON before if and
// only if it is afterwards. Any thread. May throw std::bad_alloc.
JsonScan scanJson(std::string_view text);

}  // namespace fexora
