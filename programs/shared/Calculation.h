// Calculations as people type them: sums (see Sum.h) of numbers that readAmount reads.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/fexora.h"

#include "programs/shared/Sum.h"

namespace fexora::program {

struct Calculation {
  struct Number {
    std::string typed;
    TypedAmount read;
  };

  SumResult sum;
  std::vector<Number>
      ambiguous;                // the numbers in it with two readings, of which `sum` has the first
  std::optional<double> other;  // the result with their second ones, where that is another number
};

// `text` with plain signs, in the current locale. A number that carries a currency is none here.
Calculation calculate(std::string_view text);

}  // namespace fexora::program
