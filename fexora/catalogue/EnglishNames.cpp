#include "fexora/catalogue/EnglishNames.h"

namespace fexora {

std::optional<std::string_view> englishName(std::string_view code) noexcept {
  std::string_view lines = kEnglishNames.substr(1);
  while (!lines.empty()) {
    // The line in the middle.
    const std::size_t middle = lines.size() / 2;
    const std::size_t start = middle == 0 ? 0 : lines.rfind('\n', middle - 1) + 1;
    const std::string_view line = lines.substr(start, lines.find('\n', start) - start);
    const std::size_t mark = line.find('\t');
    const int order = code.compare(line.substr(0, mark));
    if (order == 0) return line.substr(mark + 1);
    lines = order < 0 ? lines.substr(0, start) : lines.substr(start + line.size() + 1);
  }
  return std::nullopt;
}

}  // namespace fexora
