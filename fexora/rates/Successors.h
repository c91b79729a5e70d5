// Dollar rates of withdrawn currencies, from those of the currencies that took their place.
#pragma once

#include <vector>

#include "fexora/records/USDRate.h"

namespace fexora {

// The list as given, and after it, by code, a rate for each withdrawn currency whose code is not in
// it and whose successors' ratios (see catalogue/CurrencyFacts.h) lead to one that is: the nearest
// that is given, over as many successors as need be. One US dollar buys of the old currency what it
// buys of that one, times the ratios; both as the decimals that they print as, and rounded once.
//
// Nothing in the list is changed, replaced or moved. Of two rates with one code the first counts. A
// rate that is not finite or not above zero is followed to nothing. Nothing is added where there is
// no memory, of which one log line tells.
//
// For a host that shows or converts old amounts: give the list to StoreManager::saveUSDRates.
// No operation of the library calls it.
// One thread at a time, as the records.
FEXORA_API std::vector<USDRateRef> withSuccessors(std::vector<USDRateRef> rates);

}  // namespace fexora
