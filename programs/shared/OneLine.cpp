#include "programs/shared/OneLine.h"

namespace fexora::program {
namespace {

constexpr std::size_t kMostCharacters = 500;

}  // namespace

std::string oneLine(std::string_view text) {
  std::string line;
  std::size_t characters = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool continues = (byte & 0xC0U) == 0x80U;
    if (!continues && ++characters > kMostCharacters) break;
    line += byte < 0x20 || byte == 0x7F ? ' ' : c;
  }
  return line;
}

}  // namespace fexora::program
