#include "tests/support/ScratchFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace fexora::test {

ScratchFolder::ScratchFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "fexora-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) ADD_FAILURE() << "no scratch folder at " << name;
  path_ = name;
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << path;
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void writeFile(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary);
  out << bytes;
  EXPECT_TRUE(out.flush()) << path;
}

}  // namespace fexora::test
