// Runs another program and takes what it prints.
#pragma once

#include <string>
#include <vector>

namespace fexora::test {

struct CommandResult {
  int exitCode = -1;
  std::string output;  // standard output; standard error is the test's own
};

// `arguments` begins with the program's path; no shell takes part.
CommandResult runCommand(const std::vector<std::string>& arguments);

// The output of a Python script of the source tree; fails the test when it does not exit with 0.
std::string runPython(const std::string& script, std::vector<std::string> arguments);

}  // namespace fexora::test
