// The currencies' names in the user's language.
#pragma once

#include <string>

#include "fexora/fexora.h"

#include "programs/fexora/CommandLine.h"

namespace fexora::program {

// Gives the library the names of the language asked for, or of the environment's. Before its first
// use.
void prepareNames(const CommandLine& line);

// Whether people see names beside codes: asked for, or standard output is a terminal.
bool showsNames(const CommandLine& line);
// Whether JSON carries them: only when asked for.
bool asksForNames(const CommandLine& line);

// The code again where there is no name.
std::string nameOf(const Currency& currency);
// "USD", or with names "USD (US Dollar)".
std::string codeAndName(const Currency& currency, bool names);

}  // namespace fexora::program
