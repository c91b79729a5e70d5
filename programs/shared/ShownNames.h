// The currencies' names in the user's language.
#pragma once

#include <string>

#include "fexora/fexora.h"

namespace fexora::program {

// Gives the library the names of a language ("ja"), or of the environment's for an empty one. Once,
// before its first use.
void useNamesOf(const std::string& language);

// The code again where there is no name.
std::string nameOf(const Currency& currency);
// "USD", or with names "USD (US Dollar)".
std::string codeAndName(const Currency& currency, bool names);

}  // namespace fexora::program
