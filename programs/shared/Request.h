// What the words of a conversion ask for.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "programs/shared/Amount.h"

namespace fexora::program {

struct Request {
  Amount amount;
  CurrencyRef source;
  std::vector<CurrencyRef> destinations;  // each once; empty: the stored selection
  std::vector<std::string> notes;         // how words were read, a line each
};

// AMOUNT SRC [DST…], with the source left out where the amount carries it, and a lone in, to, into,
// as or = between source and destinations. `amount` stands in the place of the first operand.
// Throws a Failure.
Request requestOf(const std::vector<std::string>& operands, const std::string& amount);

// Whether the word is one of those that are passed over, and no currency.
bool isFiller(const std::string& word);
// Whether the word is GBp or another one of hundredths, which is no code then.
bool isHundredth(std::string_view word);
// Whether requestOf takes the text for a currency.
bool namesCurrency(const std::string& text);

}  // namespace fexora::program
