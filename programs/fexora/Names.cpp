#include "programs/fexora/Names.h"

#include <unistd.h>

namespace fexora::program {

bool showsNames(const CommandLine& line) {
  return asksForNames(line) || isatty(STDOUT_FILENO) != 0;
}

bool asksForNames(const CommandLine& line) {
  return line.names || !line.language.empty();
}

}  // namespace fexora::program
