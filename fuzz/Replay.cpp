// Runs a target on every file of the folders named, in the order of their names: how the seeds and
// all that fuzzing ever found stay tests, with any compiler.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/Target.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesIn(const char* folder) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().filename() != "README.md") files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

bool replay(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(in), {}};
  std::fprintf(stderr, "%s\n", file.c_str());
  const bool isRead = in.good() || in.eof();
  // Of exactly the input's size, so that the address sanitizer sees a read beyond it.
  const std::vector<std::uint8_t> exact(bytes.begin(), bytes.end());
  if (isRead) LLVMFuzzerTestOneInput(exact.data(), exact.size());
  return isRead;
}

}  // namespace

int main(int count, char** words) {
  std::vector<fs::path> files;
  for (int i = 1; i < count; ++i) {
    if (!fs::is_directory(words[i])) continue;  // no finds yet
    const auto more = filesIn(words[i]);
    files.insert(files.end(), more.begin(), more.end());
  }
  const bool areRead = std::all_of(files.begin(), files.end(), replay);
  return areRead && !files.empty() ? 0 : 1;
}
