// Our reader and writer against Python's plistlib, in both encodings and both directions.
#include <clocale>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"

#include "tests/support/Command.h"
#include "tests/support/Describe.h"
#include "tests/support/RandomValues.h"
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

class ReadsWhatPlistlibWrites : public testing::TestWithParam<const char*> {};

TEST_P(ReadsWhatPlistlibWrites, BitForBit) {
  const ScratchFolder folder;
  const GermanNumbers german;
  const std::string made =
      runPython("tests/support/plist_tool.py",
                {"make", GetParam(), "7", std::to_string(kFiles), folder.path()});
  const std::vector<std::string> expected = lines(made);
  ASSERT_EQ(expected.size(), static_cast<std::size_t>(kFiles));
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const PlistResult read = readPropertyList(readFile(folder / (std::to_string(i) + ".plist")));
    EXPECT_TRUE(read.ok()) << read.error;
    EXPECT_TRUE(sameDescription(describe(read.value), expected[i])) << "file " << i;
  }
}

INSTANTIATE_TEST_SUITE_P(Interchange, ReadsWhatPlistlibWrites, testing::Values("xml", "binary"),
                         [](const auto& encoding) { return std::string(encoding.param); });

TEST(Interchange, PlistlibReadsWhatWeWrite) {
  const ScratchFolder folder;
  const GermanNumbers german;
  RandomValues random(11);
  std::vector<std::string> expected;
  std::vector<std::string> arguments = {"describe"};
  for (int i = 0; i < kFiles; ++i) {
    const Value value = random.dictionary(12, 4);
    const PlistBytes written = writePropertyList(value);
    ASSERT_TRUE(written.ok()) << written.error;
    const Value back = readPropertyList(written.bytes).value;
    EXPECT_TRUE(sameDescription(describe(back), describe(value)));
    arguments.push_back(folder / std::to_string(i));
    writeFile(arguments.back(), written.bytes);
    expected.push_back(describe(value));
  }
  const auto described = lines(runPython("tests/support/plist_tool.py", arguments));
  ASSERT_EQ(described.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_TRUE(sameDescription(described[i], expected[i])) << "file " << i;
  }
}

}  // namespace
}  // namespace fexora::test
