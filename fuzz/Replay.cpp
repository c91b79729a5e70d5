// Runs a target on every file of the folders named, in the order of their names, and on some
// thousand damaged forms of them, the same ones each time: how the seeds and all that fuzzing ever
// found stay tests, with any compiler.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
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

// One to four damages: bytes changed, left out, doubled, or taken from another seed.
class Mutator {
 public:
  explicit Mutator(const std::vector<std::string>& seeds) : seeds_(seeds) {}

  std::string next() {
    std::string bytes = seeds_[below(seeds_.size())];
    for (auto damages = 1 + below(4); damages > 0; --damages) damage(bytes);
    return bytes;
  }

 private:
  std::size_t below(std::size_t bound) { return engine_() % std::max<std::size_t>(bound, 1); }
  std::string pieceOf(const std::string& bytes) {
    return bytes.substr(below(bytes.size()), 1 + below(24));
  }

  void damage(std::string& bytes) {
    const std::size_t at = below(bytes.size());
    switch (below(5)) {
      case 0:
        if (!bytes.empty()) bytes[at] = static_cast<char>(engine_());
        break;
      case 1:
        if (!bytes.empty()) bytes[at] = static_cast<char>(bytes[at] ^ (1 << below(8)));
        break;
      case 2:
        bytes.erase(at, 1 + below(8));
        break;
      case 3:
        bytes.insert(at, pieceOf(bytes));
        break;
      default:
        bytes.insert(at, pieceOf(seeds_[below(seeds_.size())]));
    }
  }

  const std::vector<std::string>& seeds_;
  std::mt19937_64 engine_{20261125};  // NOLINT(cert-msc51-cpp): the same run every time
};

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
  Mutator mutator(seeds);
  for (int i = 0; i < kMutations; ++i) run(mutator.next());
  return 0;
}
