#include "fexora/platform/base/BringIn.h"

#include <cerrno>
#include <memory>

#include <sys/mman.h>
#include <unistd.h>

namespace fexora {

void bringIn(void* memory, std::size_t bytes) noexcept {
#ifdef MADV_POPULATE_WRITE
  // The call itself costs as much as a few pages.
  constexpr std::size_t kWorthIt = 65536;
  if (bytes < kWorthIt) return;
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  void* first = memory;
  if (std::align(page, page, first, bytes) == nullptr) return;
  const int error = errno;
  madvise(first, bytes - bytes % page, MADV_POPULATE_WRITE);
  errno = error;
#endif
}

}  // namespace fexora
