// The private module that evaluates typed calculations, so that its expression library (and what
// that links) is loaded by those runs alone that calculate.
#pragma once

#include <cstddef>
#include <cstdint>

namespace fexora::program {

// Operators + - * /, parentheses and blanks, with n0, n1, … for the numbers.
struct Formula {
  const char* text;  // ends with a NUL
  const double* numbers;
  std::size_t count;
};

enum class Problem : std::uint8_t {
  none,
  unexpected,      // something that cannot stand at this place
  incomplete,      // the end, where a number should follow
  unbalanced,      // a parenthesis without its partner
  divisionByZero,  // the place is the operator's
  failed           // none of these; the place says nothing
};

struct Outcome {
  double value = 0;
  Problem problem = Problem::none;
  std::size_t place = 0;  // of the problem, in bytes of the text
};

}  // namespace fexora::program

extern "C" __attribute__((visibility("default"))) void fexora_calculate(
    const fexora::program::Formula* formula, fexora::program::Outcome* outcome);
