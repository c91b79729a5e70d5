// A full disk and a limit on file sizes, as the system itself plays them: a part of the file is
// written, and then no more.
#include <filesystem>

#include <gtest/gtest.h>
#include <sys/mount.h>

#include "fexora/platform/plist/PropertyListWriter.h"

#include "tests/support/Command.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora::test {
namespace {

// A small file system in memory.
class SmallDisk {
 public:
  SmallDisk() {
    isMounted_ =
        ::mount("fexora-test", folder_.path().c_str(), "tmpfs", 0, "size=64k,mode=0700") == 0;
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  ~SmallDisk() {
    if (isMounted_) ::umount(folder_.path().c_str());
  }
  bool isMounted() const { return isMounted_; }
  const std::string& path() const { return folder_.path(); }

 private:
  ScratchFolder folder_;
  bool isMounted_ = false;
};

// Saves what cannot be held, over a file that is there.
void expectOldFileKept(const std::string& folder, const std::vector<std::string>& command,
                       const std::string& cause) {
  const EnvironmentVariable variable("FEXORA_CONTAINER", folder);
  const std::string file = folder + "/Store.plist";
  const std::string old = writePropertyList(Dictionary{{"Fraction", 6}}).bytes;
  writeFile(file, old);
  const auto run = runCommand(command);
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.errors, "SAVE FAIL\nThe store " + file + " was not saved: write: " + cause + "\n");
  EXPECT_EQ(readFile(file), old);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

const std::string kSaver = std::string(FEXORA_TEST_BINARY_DIR) + "/bin/reliability_saver";

TEST(RealShortage, FullDisk_KeepsTheOldFile) {
  const SmallDisk disk;
  if (!disk.isMounted()) GTEST_SKIP() << "this system allows no mount: nothing is proven";
  expectOldFileKept(disk.path(), {kSaver, "save", "1"}, "No space left on device");
}

TEST(RealShortage, LimitOnFileSizes_KeepsTheOldFile) {
  const ScratchFolder folder;
  // The limit's signal would end the process; a host that sets a limit ignores it.
  expectOldFileKept(folder.path(),
                    {"/bin/bash", "-c", "trap '' XFSZ; ulimit -f 8; exec \"$0\" save 1", kSaver},
                    "File too large");
}

}  // namespace
}  // namespace fexora::test
