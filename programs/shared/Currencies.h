// Currencies as people type them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::program {

// The catalogue's currency for a code typed in any case; null when there is none.
CurrencyRef findCurrency(std::string_view typed);

// The same, but throws a Failure that names the text and offers what may have been meant.
CurrencyRef currencyFromText(std::string_view typed);
// "; near: USD (US Dollar), EUR (Euro)", or nothing.
std::string nearText(const std::vector<CurrencyRef>& currencies);

// The currencies of several codes, each once, in order.
std::vector<CurrencyRef> currenciesFromTexts(const std::vector<std::string>& typed);

// "EUR, USD"
std::string listed(const std::vector<std::string>& codes);

std::vector<std::string> codesOf(const std::vector<CurrencyRef>& currencies);

}  // namespace fexora::program
