// A host may end at any moment of a request: it ends soon, with its own exit code.
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/Command.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/VirtualPlatform.h"

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

// Programs load the library from a folder that has no modules, while one lives.
class LibraryAlone {
 public:
  LibraryAlone();

  const ScratchFolder scratch;

 private:
  const EnvironmentVariable path_{"LD_LIBRARY_PATH", scratch.path()};
};

LibraryAlone::LibraryAlone() {
  for (const auto& entry : std::filesystem::directory_iterator(FEXORA_TEST_BINARY_DIR "/lib")) {
    const std::string name = entry.path().filename();
    if (name.starts_with("libfexora.so")) std::filesystem::copy(entry.path(), scratch / name);
  }
}

// And then with the module of its loop only.
TEST(Module, Missing_IsAnError) {
  const LibraryAlone library;
  const ScratchFolder& scratch = library.scratch;
  const auto alone = runCommand({kProgram, "completed"});
  EXPECT_EQ(alone.output, "") << "nothing to complete a request with";
  EXPECT_NE(alone.errors.find("no loop module"), std::string::npos) << alone.errors;
  const std::filesystem::path modules = FEXORA_TEST_MODULES;
  const std::filesystem::path copies = scratch / modules.filename();
  std::filesystem::create_directory(copies);
  std::filesystem::copy(modules / "fexora_loop.so", copies / "fexora_loop.so");
  EXPECT_EQ(runCommand({kProgram, "completed"}).output, "no transport\n");
  EXPECT_EQ(runCommand({kProgram, "at-once"}).exitCode, 0);
}

TEST(Module, MissingForAStore_IsNoDamage) {
  const ScratchFolder container;
  const std::string bytes =
      "<plist version='1.0'><dict><key>other</key><string>x</string></dict></plist>";
  writeFile(container / "Store.plist", bytes);
  const std::string program = FEXORA_TEST_BINARY_DIR "/bin/fexora";
  const auto set = [&] {
    return runCommand({program, "settings", "fraction", "5", "--container", container.path()});
  };
  {
    const LibraryAlone library;
    const auto alone = set();
    EXPECT_EQ(alone.exitCode, 4) << alone.output << alone.errors;
    EXPECT_EQ(readFile(container / "Store.plist"), bytes);
  }
  EXPECT_EQ(set().exitCode, 0);
  const std::string saved = readFile(container / "Store.plist");
  EXPECT_NE(saved.find("<string>x</string>"), std::string::npos);
  EXPECT_NE(saved.find("<integer>5</integer>"), std::string::npos);
}

}  // namespace
}  // namespace fexora::test
