// What is wrong with a sentence that cannot be read, and where.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "fexora/catalogue/Currency.h"

namespace fexora {

struct SentenceProblem {
  enum class Kind {
    none,
    tooLong,
    notText,          // no UTF-8
    noAmount,         // nothing in it is a number or a currency
    noNumber,         // digits and marks that are no number, or more after one: see `reason`
    tooLarge,         // a number or a result beyond the doubles
    unexpected,       // something that cannot stand in a calculation at this place
    incomplete,       // the end, where a number should follow
    unbalanced,       // a parenthesis without its partner
    divisionByZero,   // the place is the operator's
    secondCurrency,   // a calculation with two
    unknownCurrency,  // a word that is no currency, or only the beginning of one
    unit,             // a unit of weight beside what is no metal
    unknownDay,       // from a word that a day follows, such as "on", to the end
  };
  Kind kind = Kind::none;
  // Bytes of the sentence.
  std::size_t place = 0;
  std::size_t length = 0;
  // One line for a person, in English, which lives as long as the process.
  std::string_view reason;
  // What the word at this place may have meant, the nearest first; empty unless asked for.
  std::vector<CurrencyRef> near;
};

}  // namespace fexora
