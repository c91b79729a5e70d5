// Made by tools/make-signs from ICU's CLDR data and currency-facts.tsv; change these and run it.
#pragma once

#include <string_view>

namespace fexora {

// One line for each: sign, tab, codes separated by blanks; and region, or locale without one, tab,
// code. In the order of what comes before the tab, byte by byte, with a line end before the first.
extern const std::string_view kCurrencySigns;
extern const std::string_view kRegionCurrencies;

}  // namespace fexora
