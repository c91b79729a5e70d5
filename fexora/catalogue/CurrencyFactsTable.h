// Made by tools/make-facts from currencies.tsv, currency-facts.tsv and the Unicode
// CLDR 42 of ICU 72; change the tables and run it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fexora {

inline constexpr std::size_t kCurrencyFactsRows = 421;

// One line for each, by code; its cells, separated by tabs, are those that factsOf() in
// CurrencyFacts.cpp takes. One text, so that the library need not relocate a pointer for each cell
// at every start.
extern const std::string_view kCurrencyFactsTable;
// Where each line begins.
extern const std::array<std::uint16_t, kCurrencyFactsRows> kCurrencyFactsStarts;

}  // namespace fexora
