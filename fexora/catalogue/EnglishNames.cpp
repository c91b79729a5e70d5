#include "fexora/catalogue/EnglishNames.h"

#include <array>

namespace fexora {
namespace {

constexpr std::size_t kLongestCode = 15;

}  // namespace

std::optional<std::string_view> englishName(std::string_view code) noexcept {
  // A code with one of the table's own marks in it is none.
  if (code.empty() || code.size() > kLongestCode || code.find_first_of("\t\n") != code.npos) {
    return std::nullopt;
  }
  std::array<char, kLongestCode + 2> line{'\n'};
  line[code.copy(&line[1], code.size()) + 1] = '\t';
  const auto at = kEnglishNames.find(std::string_view(line.data(), code.size() + 2));
  if (at == kEnglishNames.npos) return std::nullopt;
  const std::string_view name = kEnglishNames.substr(at + code.size() + 2);
  return name.substr(0, name.find('\n'));
}

}  // namespace fexora
