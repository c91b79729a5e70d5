// Damages real inputs, the same ones each time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace fexora::fuzz {

// One to four damages: bytes changed, left out, doubled, or taken from another seed; or the rest
// cut off.
class Mutator {
 public:
  explicit Mutator(std::vector<std::string> seeds) : seeds_(std::move(seeds)) {}

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
    switch (below(6)) {
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
        bytes.resize(at);
        break;
      case 4:
        bytes.insert(at, pieceOf(bytes));
        break;
      default:
        bytes.insert(at, pieceOf(seeds_[below(seeds_.size())]));
    }
  }

  std::vector<std::string> seeds_;
  std::mt19937_64 engine_{20261125};  // NOLINT(cert-msc51-cpp): the same run every time
};

}  // namespace fexora::fuzz
