#include "tests/support/Command.h"

#include <array>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fexora::test {
namespace {

std::string readToEnd(int descriptor) {
  std::string out;
  std::array<char, 4096> buffer{};
  while (true) {
    const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return out;
    out.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

}  // namespace

CommandResult runCommand(const std::vector<std::string>& arguments) {
  CommandResult result;
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return result;
  std::vector<char*> argv;
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  pid_t child = 0;
  const int failure = posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  ::close(ends[1]);
  if (failure == 0) {
    result.output = readToEnd(ends[0]);
    int status = 0;
    if (::waitpid(child, &status, 0) == child && WIFEXITED(status)) {
      result.exitCode = WEXITSTATUS(status);
    }
  }
  ::close(ends[0]);
  return result;
}

std::string runPython(const std::string& script, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {FEXORA_TEST_PYTHON, FEXORA_TEST_SOURCE_DIR "/" + script});
  const CommandResult result = runCommand(arguments);
  EXPECT_EQ(result.exitCode, 0) << script;
  return result.output;
}

}  // namespace fexora::test
