#include "bench/programs/Child.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fexora::bench {

pid_t start(const Command& command) {
  std::vector<char*> words;
  for (const std::string& word : command.words) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  const char* const input = command.input.empty() ? "/dev/null" : command.input.c_str();
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, input, O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
  pid_t child = -1;
  const int failed = posix_spawnp(&child, words[0], &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return failed == 0 ? child : -1;
}

Usage run(const Command& command) {
  const pid_t child = start(command);
  int status = -1;
  rusage usage{};
  if (child < 0 || wait4(child, &status, 0, &usage) != child) return {false, 0};
  return {WIFEXITED(status) && WEXITSTATUS(status) == 0,
          static_cast<double>(usage.ru_maxrss) / 1024};
}

}  // namespace fexora::bench
