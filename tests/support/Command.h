// Runs another program and takes what it prints.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fexora::test {

struct CommandResult {
  int exitCode = -1;  // also when a signal ended it
  std::string output;
  std::string errors;  // standard error
};

// `arguments` begins with the program's path; no shell takes part. `input` is its standard input.
CommandResult runCommand(const std::vector<std::string>& arguments, std::string_view input = {});

// The output of a Python script of the source tree; fails the test when it does not exit with 0.
std::string runPython(const std::string& script, std::vector<std::string> arguments);

}  // namespace fexora::test
