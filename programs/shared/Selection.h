// The lines that a list of currencies in the store makes, where codes may come twice, in any case,
// or be none.
#pragma once

#include <vector>

#include "fexora/fexora.h"

namespace fexora::program {

// The currencies of the list in its order, each once: the catalogue's own, and as they are those
// that the catalogue does not know.
std::vector<CurrencyRef> withoutDoubles(const std::vector<CurrencyRef>& list);

// The same without the source.
std::vector<CurrencyRef> linesOf(const std::vector<CurrencyRef>& list, const Currency& source);

}  // namespace fexora::program
