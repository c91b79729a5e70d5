// The pair rates as a plain list, worked out step by step: what PairRates is compared with.
#pragma once

#include <vector>

#include "fexora/fexora.h"

namespace fexora::test {

// As slow as the words of PairRates.h make it.
std::vector<Rate> referencePairs(const CurrencyManager& catalogue,
                                 const std::vector<USDRateRef>& usdRates,
                                 const std::vector<CurrencyRef>& selection);

}  // namespace fexora::test
