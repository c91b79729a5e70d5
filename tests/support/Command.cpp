#include "tests/support/Command.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/ScratchFolder.h"

namespace fexora::test {

CommandResult runCommand(const std::vector<std::string>& arguments, std::string_view input) {
  // Files take any amount while nobody reads.
  const ScratchFolder scratch;
  writeFile(scratch / "0", std::string(input));
  std::vector<char*> argv;
  argv.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    posix_spawn_file_actions_addopen(&actions, stream, (scratch / std::to_string(stream)).c_str(),
                                     O_RDWR | O_CREAT, 0600);
  }
  pid_t child = 0;
  const int failure = posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  if (failure != 0 || waitpid(child, &status, 0) != child) return {};
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(scratch / "1"),
          readFile(scratch / "2")};
}

std::string runPython(const std::string& script, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {FEXORA_TEST_PYTHON, FEXORA_TEST_SOURCE_DIR "/" + script});
  const CommandResult result = runCommand(arguments);
  EXPECT_EQ(result.exitCode, 0) << script << ": " << result.errors;
  return result.output;
}

}  // namespace fexora::test
