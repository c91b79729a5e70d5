// How old rates are, in words.
#pragma once

#include <string>

#include "fexora/fexora.h"

#include "programs/shared/OtherRates.h"

namespace fexora::program {

// "29 September", with the year when it is not this one.
std::string dayText(const Date& date);

// "rates of 29 September, bundled, 57 days old", of rates that are there; in place of "bundled" the
// name of a source that has one.
std::string ratesText(const Freshness& fresh);
// "rate of 29 September, bundled", of one that is not of the newest table.
std::string rateText(const RateOrigin& of);

}  // namespace fexora::program
