#include "fexora/platform/base/Guarded.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <initializer_list>
#include <new>

namespace fexora {
namespace {

constexpr std::size_t kLineBytes = 512;

// The parts in one line, cut where the line is full; made without memory.
void logParts(Log& log, std::initializer_list<std::string_view> parts) noexcept {
  std::array<char, kLineBytes> line{};
  std::size_t size = 0;
  for (const std::string_view part : parts) {
    const std::size_t count = std::min(part.size(), line.size() - size);
    std::copy_n(part.begin(), count, line.begin() + static_cast<std::ptrdiff_t>(size));
    size += count;
  }
  log.write({line.data(), size});
}

}  // namespace

bool callGuarded(Log& log, std::string_view operation, EdgeCall call) {
  try {
    call.run(call.subject);
    return true;
  } catch (const std::bad_alloc&) {
    logParts(log, {operation, ": ", kOutOfMemory});
    return false;
  }
}

void callQuietly(Log& log, std::string_view what, EdgeCall call) noexcept {
  try {
    call.run(call.subject);
  } catch (const std::exception& error) {
    logParts(log, {what, " threw: ", error.what()});
  } catch (...) {
    logParts(log, {what, " threw"});
  }
}

}  // namespace fexora
