// Amounts as people type them: a number that may carry its currency, or a calculation like 12+3*2.
#pragma once

#include <string>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::program {

struct Amount {
  double value = 0;                // always finite
  TypedAmount reading;             // of a number; of a calculation kind, value and other alone
  std::string currency;            // that the text carried, or empty
  std::vector<std::string> notes;  // what was read in one of several ways, a line each
};

// The amount that `typed` stands for in the current locale: a number as readAmount reads it, or
// such numbers with + - * / % and parentheses between them. Throws a Failure of kind "amount" for
// anything else, with the place, counted in characters from 1. A result beyond the doubles, and a
// division by zero, are none.
Amount amountFromText(const std::string& typed);

}  // namespace fexora::program
