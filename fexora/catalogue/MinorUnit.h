// Amounts of money rounded to what can be paid. For people to see: the library's own conversions
// round nothing.
#pragma once

#include <cstdint>

#include "fexora/catalogue/CurrencyFacts.h"

namespace fexora {

// Where an amount between two neighbours goes; the same for a debt as for a credit.
enum class Rounding : std::uint8_t {
  halfEven,  // to the nearer one, from the middle to the even one
  halfUp,    // to the nearer one, from the middle away from zero
  up,        // away from zero
  down,      // towards zero
  cash,      // to the nearer multiple of CurrencyFacts::cashStep; see there for the middle, which
             // goes away from zero but for NZD. The minor unit and halfUp where there is no step
};

// `value` rounded to the minor unit of a currency; as it is where that has none. What is rounded is
// the decimal that the double prints as (its shortest text): 2.675 USD is 2.68 half up, although
// the double lies below. The answer is the double nearest to the rounded decimal, never -0.0.
// Infinite and not-a-number come back as they are, and so does `value` where there is no memory.
// Any thread.
FEXORA_API double roundedToMinorUnit(double value, const CurrencyFacts& facts, Rounding mode);

}  // namespace fexora
