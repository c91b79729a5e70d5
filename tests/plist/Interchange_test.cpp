// Our reader and writer against Python's plistlib, in both encodings and both directions, while the
// process's numbers are German.
#include <clocale>
#include <string>

#include <gtest/gtest.h>

#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"

#include "tests/support/Command.h"
#include "tests/support/Describe.h"
#include "tests/support/ScratchFolder.h"

namespace fexora::test {
namespace {

class Interchange : public testing::TestWithParam<const char*> {
 protected:
  // Where the machine has German numbers.
  Interchange() { std::setlocale(LC_ALL, "de_DE.UTF-8"); }
  ~Interchange() override { std::setlocale(LC_ALL, "C"); }
};

TEST_P(Interchange, PlistlibsFilesAndOurs_SayTheSameBitForBit) {
  const ScratchFolder folder;
  const std::string tool = "tests/support/plist_tool.py";
  const std::string expected = runPython(tool, {"make", folder / "theirs", GetParam()});
  const PlistResult read = readPropertyList(readFile(folder / "theirs"));
  EXPECT_TRUE(sameDescription(describe(read.value) + "\n", expected)) << read.error;
  writeFile(folder / "ours", writePropertyList(read.value).bytes);
  EXPECT_TRUE(sameDescription(runPython(tool, {"describe", folder / "ours"}), expected));
}

INSTANTIATE_TEST_SUITE_P(Plistlib, Interchange, testing::Values("xml", "binary"),
                         [](const auto& encoding) { return std::string(encoding.param); });

}  // namespace
}  // namespace fexora::test
