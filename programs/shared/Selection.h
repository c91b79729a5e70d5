// The lines that a stored list of currencies makes.
#pragma once

#include <vector>

#include "fexora/fexora.h"

namespace fexora::program {

// The currencies of the list in its order, each once and without the source: the catalogue's own
// for codes in any case, and as they are those that the catalogue does not know.
std::vector<CurrencyRef> linesOf(const std::vector<CurrencyRef>& list, const Currency& source);

}  // namespace fexora::program
