// Sums that people type: numbers with + - * / and parentheses between them, in the usual order, and
// per cents.
//
// A lone per cent after + or - is that share of what stands before ("100 + 10%" is 110); any other
// is a hundredth ("200 * 10%" is 20).
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace fexora::program {

struct SumResult {
  enum class Problem : std::uint8_t {
    none,
    unexpected,      // something that cannot stand at this place
    incomplete,      // the end, where a number should follow
    unbalanced,      // a parenthesis without its partner
    noNumber,        // a word that is no number
    divisionByZero,  // the place is the operator's
    notFinite,       // a result beyond the doubles
    tooLong
  };

  double value = 0;
  Problem problem = Problem::none;
  std::size_t place = 0;   // of the problem, in bytes of the text; its size: at its end
  std::size_t length = 0;  // of the word that is no number
};

// Evaluates `text`, in which blanks and the signs + - * / ( ) % end a number; a number may have one
// sign before it. `number` reads one. Texts of more than a thousand bytes are too long, so that
// nesting is bounded.
using NumberReader = std::function<std::optional<double>(std::string_view word)>;
SumResult evaluateSum(std::string_view text, const NumberReader& number);

// The text with * / - for the signs × ÷ −, which are one character each as well.
std::string withPlainSigns(std::string_view text);
// Whether such a text has any of the signs of a sum.
bool mayBeSum(std::string_view text);

}  // namespace fexora::program
