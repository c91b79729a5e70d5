#include "tests/support/Command.h"

namespace fexora::test {

std::string runPython(const std::string& script, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {FEXORA_TEST_PYTHON, FEXORA_TEST_SOURCE_DIR "/" + script});
  const CommandResult result = runCommand(arguments);
  EXPECT_EQ(result.exitCode, 0) << script << ": " << result.errors;
  return result.output;
}

}  // namespace fexora::test
