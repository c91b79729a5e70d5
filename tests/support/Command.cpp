#include "tests/support/Command.h"

#include <cstdlib>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "tests/support/ScratchFolder.h"

namespace fexora::test {
namespace {

// For the shell, which takes everything between these quotes as it is.
std::string quoted(const std::string& word) {
  std::string text = "'";
  for (const char c : word) text += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return text + "'";
}

}  // namespace

CommandResult runCommand(const std::vector<std::string>& arguments, std::string_view input) {
  const ScratchFolder scratch;
  writeFile(scratch / "in", std::string(input));
  std::string line = "exec";
  for (const std::string& argument : arguments) line += " " + quoted(argument);
  line += " <" + quoted(scratch / "in") + " >" + quoted(scratch / "out") + " 2>" +
          quoted(scratch / "err");
  const int status = std::system(line.c_str());  // NOLINT(concurrency-mt-unsafe)
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(scratch / "out"),
          readFile(scratch / "err")};
}

std::string runPython(const std::string& script, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {FEXORA_TEST_PYTHON, FEXORA_TEST_SOURCE_DIR "/" + script});
  const CommandResult result = runCommand(arguments);
  EXPECT_EQ(result.exitCode, 0) << script << ": " << result.errors;
  return result.output;
}

}  // namespace fexora::test
