// Amounts that are typed as a calculation, like 12+3*2.
#pragma once

#include <string>

namespace fexora::program {

// The amount that `typed` stands for, always finite: a number as parseAmount reads it, or such
// numbers with + - * / and parentheses between them. Throws a Failure of kind "amount" for anything
// else; for a calculation it names the place, counted in characters from 1. A result beyond the
// doubles, and a division by zero, are none.
double amountFromText(const std::string& typed);

}  // namespace fexora::program
