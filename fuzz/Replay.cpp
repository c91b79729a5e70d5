// Runs a target on every file of the folders named, in the order of their names, and on some
// thousand damaged forms of them, the same ones each time: how the seeds and all that fuzzing ever
// found stay tests, with any compiler.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "fuzz/Mutator.h"
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

std::optional<std::string> contentOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(in), {}};
  return in.good() || in.eof() ? std::optional(bytes) : std::nullopt;
}

void run(const std::string& bytes) {
  // Of exactly the input's size, so that the address sanitizer sees a read beyond it.
  const std::vector<std::uint8_t> exact(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

}  // namespace

int main(int count, char** words) {
  constexpr int kMutations = 4000;
  std::vector<std::string> seeds;
  for (int i = 1; i < count; ++i) {
    if (!fs::is_directory(words[i])) continue;  // no finds yet
    for (const auto& file : filesIn(words[i])) {
      std::fprintf(stderr, "%s\n", file.c_str());
      auto bytes = contentOf(file);
      if (!bytes) return 1;
      run(*bytes);
      seeds.push_back(*std::move(bytes));
    }
  }
  if (seeds.empty()) return 1;
  fexora::fuzz::Mutator mutator(seeds);
  for (int i = 0; i < kMutations; ++i) run(mutator.next());
  return 0;
}
