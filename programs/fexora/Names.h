// Where the currencies' names are shown.
#pragma once

#include "programs/fexora/CommandLine.h"

namespace fexora::program {

// Whether people see names beside codes: asked for, or standard output is a terminal.
bool showsNames(const CommandLine& line);
// Whether JSON carries them: only when asked for.
bool asksForNames(const CommandLine& line);

}  // namespace fexora::program
