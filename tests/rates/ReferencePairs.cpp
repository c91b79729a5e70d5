#include "tests/rates/ReferencePairs.h"

#include <algorithm>

namespace fexora::test {

std::vector<Rate> referencePairs(const CurrencyManager& catalogue,
                                 const std::vector<USDRateRef>& usdRates,
                                 const std::vector<CurrencyRef>& selection) {
  std::vector<USDRateRef> used;
  for (const auto& rate : usdRates) {
    const auto currency = catalogue.currencyForCode(rate->code());
    const bool chosen = currency != nullptr &&
                        std::any_of(selection.begin(), selection.end(), [&](const auto& one) {
                          return one != nullptr && *one == *currency;
                        });
    if (chosen) used.push_back(rate);
  }
  std::vector<Rate> pairs;
  for (const auto& a : used) {
    const auto dollar = catalogue.currencyForCode("USD");
    const auto own = catalogue.currencyForCode(a->code());
    if (dollar == nullptr || own == nullptr || *dollar == *own) continue;
    pairs.emplace_back(dollar, own, a->rate());
    pairs.emplace_back(own, dollar, 1.0 / a->rate().doubleValue());
    for (const auto& b : used) {
      if (b->code() == a->code()) continue;
      pairs.emplace_back(own, catalogue.currencyForCode(b->code()),
                         b->rate().doubleValue() / a->rate().doubleValue());
    }
  }
  return pairs;
}

}  // namespace fexora::test
