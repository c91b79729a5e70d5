// The code that a record's printed form shows.
#pragma once

#include <string>

#include "fexora/catalogue/Currency.h"

namespace fexora {

// Empty for a reference that is not set.
inline std::string codeOf(const CurrencyRef& currency) {
  return currency != nullptr ? currency->code() : std::string();
}

}  // namespace fexora
