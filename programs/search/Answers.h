// The answers to a search: amounts in other currencies. No bus, no window, and nothing is kept.
#pragma once

#include <string>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::search {

struct Answer {
  std::string id;      // a query with this one answer, in the current locale: "100 USD EUR"
  std::string title;   // "88.023 EUR"
  std::string text;    // the rate, how old it is, and how the query was read
  std::string number;  // the amount to paste elsewhere, without grouping
};

// Empty for what is no amount with a currency. Without a destination the answers are in the store's
// selection. At most `kMostAnswers`, in the order asked for; by the store's rates and settings, and
// by the bundled rates where it has none. Main thread.
inline constexpr std::size_t kMostAnswers = 5;
std::vector<Answer> answersTo(const std::string& query, const StoreManager& store);

}  // namespace fexora::search
