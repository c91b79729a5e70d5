#include "tests/support/Command.h"

#include <array>
#include <cerrno>

#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fexora::test {
namespace {

// A file in memory: unlike a pipe it takes any amount while nobody reads.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(::memfd_create("command", MFD_CLOEXEC)) {}
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { ::close(descriptor_); }

  int descriptor() const { return descriptor_; }

  void fill(std::string_view bytes) {
    EXPECT_EQ(::pwrite(descriptor_, bytes.data(), bytes.size(), 0),
              static_cast<ssize_t>(bytes.size()));
  }
  std::string content() const {
    std::string bytes;
    std::array<char, 4096> buffer{};
    ssize_t count = 0;
    while ((count = ::pread(descriptor_, buffer.data(), buffer.size(),
                            static_cast<off_t>(bytes.size()))) > 0) {
      bytes.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return bytes;
  }

 private:
  int descriptor_;
};

int waitFor(pid_t child) {
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return -1;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

CommandResult runCommand(const std::vector<std::string>& arguments, std::string_view input) {
  std::array<MemoryFile, 3> streams;
  streams[STDIN_FILENO].fill(input);
  std::vector<char*> argv;
  argv.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
    posix_spawn_file_actions_adddup2(
        &actions, streams[static_cast<std::size_t>(stream)].descriptor(), stream);
  }
  pid_t child = 0;
  const int failure = posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  CommandResult result;
  if (failure != 0) return result;
  result.exitCode = waitFor(child);
  result.output = streams[STDOUT_FILENO].content();
  result.errors = streams[STDERR_FILENO].content();
  return result;
}

std::string runPython(const std::string& script, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {FEXORA_TEST_PYTHON, FEXORA_TEST_SOURCE_DIR "/" + script});
  const CommandResult result = runCommand(arguments);
  EXPECT_EQ(result.exitCode, 0) << script << ": " << result.errors;
  return result.output;
}

}  // namespace fexora::test
