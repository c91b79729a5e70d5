// Runs another program and takes what it prints.
#pragma once

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "tests/support/ScratchFolder.h"

namespace fexora::test {

struct CommandResult {
  int exitCode = -1;  // also when a signal ended it
  std::string output;
  std::string errors;  // standard error
};

// `arguments` begins with the program's path; none has an apostrophe. `input` is its standard
// input.
inline CommandResult runCommand(const std::vector<std::string>& arguments,
                                std::string_view input = {}) {
  // Files take any amount while nobody reads.
  const ScratchFolder scratch;
  writeFile(scratch / "in", std::string(input));
  std::string line = "cd " + scratch.path() + " && exec <in >out 2>err";
  for (const std::string& argument : arguments) line += " '" + argument + "'";
  const int status = std::system(line.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(scratch / "out"),
          readFile(scratch / "err")};
}

// The output of a Python script of the source tree; fails the test when it does not exit with 0.
std::string runPython(const std::string& script, std::vector<std::string> arguments);

}  // namespace fexora::test
