// Tables of rates, and those that the store keeps beside its list: what a newer answer lacks stays
// with its own day and source.
//
// They stand whole under a key of their own, so that no pair mixes two days. A program that does
// not know of it leaves it alone.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fexora/records/USDRate.h"
#include "fexora/store/RatesAnswer.h"

namespace fexora {

// What one source published for one day.
struct RatesTable {
  std::vector<USDRateRef> rates;
  std::optional<Date> published;
  std::string source;  // the name that people see; empty when it gave none
  RatesAnswer::Origin origin = RatesAnswer::Origin::service;
  // As it was printed, where that is known: decimals that one unit of `base` buys, by code, without
  // `base`. Empty: `rates` are the figures. Not kept in the store.
  std::string base = "USD";
  std::vector<std::pair<std::string, std::string>> figures{};
};

// The tables that the store's dictionary keeps, the newest first; what is damaged is left out. May
// throw std::bad_alloc.
FEXORA_API std::vector<RatesTable> keptTables(const Dictionary& content);

// Of `tables` those that have codes which `rates` and newer ones lack, the newest first, those of
// an unknown day last, limits::kKeptTables at most. May throw std::bad_alloc.
FEXORA_API std::vector<RatesTable> tablesBeside(const std::vector<USDRateRef>& rates,
                                                std::vector<RatesTable> tables);

// Puts them into the store's dictionary. May throw std::bad_alloc.
FEXORA_API void keepTables(Dictionary& content, const std::vector<RatesTable>& tables);

}  // namespace fexora
