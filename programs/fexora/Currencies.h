// Currencies as people type them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::program {

// The catalogue's currency for a code typed in any case. Throws a Failure that names the text and
// offers the nearest codes when there is none.
CurrencyRef currencyFromText(std::string_view typed);

// The same for several, each once, in order.
std::vector<CurrencyRef> currenciesFromTexts(const std::vector<std::string>& typed);

std::vector<std::string> codesOf(const std::vector<CurrencyRef>& currencies);

}  // namespace fexora::program
