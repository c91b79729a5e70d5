// Our reader and writer against Python's plistlib, in both encodings and both directions, while the
// process's numbers are German.
#include <clocale>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"

#include "tests/support/Command.h"
#include "tests/support/Describe.h"
#include "tests/support/ScratchFolder.h"

namespace fexora::test {
namespace {

constexpr int kFiles = 40;

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) out.push_back(line);
  return out;
}

// Restores the process's locale when it goes.
class GermanNumbers {
 public:
  GermanNumbers() : old_(std::setlocale(LC_ALL, nullptr)) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE"}) {
      if (std::setlocale(LC_ALL, name) != nullptr) return;
    }
  }
  GermanNumbers(const GermanNumbers&) = delete;
  GermanNumbers& operator=(const GermanNumbers&) = delete;
  ~GermanNumbers() { std::setlocale(LC_ALL, old_.c_str()); }

 private:
  std::string old_;
};

class Interchange : public testing::TestWithParam<const char*> {};

TEST_P(Interchange, PlistlibsFilesAndOurs_SayTheSameBitForBit) {
  const ScratchFolder folder;
  const GermanNumbers german;
  const auto expected =
      lines(runPython("tests/support/plist_tool.py",
                      {"make", GetParam(), "7", std::to_string(kFiles), folder.path()}));
  ASSERT_EQ(expected.size(), static_cast<std::size_t>(kFiles));
  std::vector<std::string> arguments = {"describe"};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const PlistResult read = readPropertyList(readFile(folder / (std::to_string(i) + ".plist")));
    EXPECT_TRUE(sameDescription(describe(read.value), expected[i])) << "file " << i << read.error;
    arguments.push_back(folder / std::to_string(i));
    writeFile(arguments.back(), writePropertyList(read.value).bytes);
  }
  const auto ours = lines(runPython("tests/support/plist_tool.py", arguments));
  ASSERT_EQ(ours.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_TRUE(sameDescription(ours[i], expected[i])) << "file " << i;
  }
}

INSTANTIATE_TEST_SUITE_P(Plistlib, Interchange, testing::Values("xml", "binary"),
                         [](const auto& encoding) { return std::string(encoding.param); });

}  // namespace
}  // namespace fexora::test
