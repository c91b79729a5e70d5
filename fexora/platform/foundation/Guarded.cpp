#include "fexora/platform/foundation/Guarded.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace fexora {

void logShortage(Log& log, std::string_view before, std::string_view subject,
                 std::string_view after) noexcept {
  std::array<char, 512> line{};
  std::size_t size = 0;
  for (const std::string_view part :
       {before, subject, after, std::string_view(": "), std::string_view(kOutOfMemory)}) {
    const std::size_t count = std::min(part.size(), line.size() - size);
    std::copy_n(part.begin(), count, line.begin() + static_cast<std::ptrdiff_t>(size));
    size += count;
  }
  log.write({line.data(), size});
}

}  // namespace fexora
