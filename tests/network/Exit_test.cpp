// A host may end at any moment of a request: it ends soon, with its own exit code.
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/Command.h"
#include "tests/support/ScratchFolder.h"

namespace fexora::test {
namespace {

const std::string kProgram = FEXORA_TEST_BINARY_DIR "/bin/network_exiting";

// A host that waits for what never ends is ended by the time limit of all tests.
class Exit : public testing::TestWithParam<const char*> {};

TEST_P(Exit, IsNotHeldUp) {
  // A leak checker that runs at exit does not see what threads held that a fork has left behind.
  setenv("LSAN_OPTIONS", "detect_leaks=0", 1);
  for (int i = 0; i < 10; ++i) {
    ASSERT_EQ(runCommand({kProgram, GetParam()}).exitCode, 0) << "run " << i;
  }
  unsetenv("LSAN_OPTIONS");
}

INSTANTIATE_TEST_SUITE_P(When, Exit,
                         testing::Values("at-once", "resolving", "connected", "secured",
                                         "receiving", "completed", "forked"),
                         [](const auto& mode) {
                           std::string name = mode.param;
                           std::erase(name, '-');
                           return name;
                         });

TEST(Module, IsOpenedByTheFirstRequest) {
  EXPECT_EQ(runCommand({kProgram, "completed"}).output, "no address\n");
}

// The library alone, and then with the module of its loop only.
TEST(Module, Missing_IsAnError) {
  const ScratchFolder scratch;
  for (const auto& entry : std::filesystem::directory_iterator(FEXORA_TEST_BINARY_DIR "/lib")) {
    const std::string name = entry.path().filename();
    if (name.starts_with("libfexora.so")) std::filesystem::copy(entry.path(), scratch / name);
  }
  setenv("LD_LIBRARY_PATH", scratch.path().c_str(), 1);
  const auto alone = runCommand({kProgram, "completed"});
  EXPECT_EQ(alone.output, "") << "nothing to complete a request with";
  EXPECT_NE(alone.errors.find("no loop module"), std::string::npos) << alone.errors;
  const std::filesystem::path modules = FEXORA_TEST_MODULES;
  const std::filesystem::path copies = scratch / modules.filename();
  std::filesystem::create_directory(copies);
  std::filesystem::copy(modules / "fexora_loop.so", copies / "fexora_loop.so");
  EXPECT_EQ(runCommand({kProgram, "completed"}).output, "no transport\n");
  EXPECT_EQ(runCommand({kProgram, "at-once"}).exitCode, 0);
  unsetenv("LD_LIBRARY_PATH");
}

}  // namespace
}  // namespace fexora::test
