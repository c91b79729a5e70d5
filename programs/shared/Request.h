// What the words of a conversion ask for.
#pragma once

#include <string>
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

}  // namespace fexora::program
