// Words that make a number larger: "5k", "1.5 million", "3 lakh". Any thread.
#pragma once

#include <optional>
#include <string_view>

#include "fexora/platform/text/Text.h"

namespace fexora {

struct NumberFactor {
  double factor;
  // Where the locale's language and English mean different powers ("billion"), the English one.
  std::optional<double> other{};
};

// English and Indian words and the letters k, M, B and T in every locale, and the locale's own,
// which come first, by Unicode CLDR's shortened numbers. Case counts in single letters.
std::optional<NumberFactor> numberFactor(std::string_view word, std::string_view locale,
                                         Text& rules);

}  // namespace fexora
