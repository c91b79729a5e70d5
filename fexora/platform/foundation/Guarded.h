// The library's edge: an operation that gets no memory ends there and is said in the log. It does
// not end the process, and nothing is thrown to the host.
#pragma once

#include <new>
#include <string_view>
#include <utility>

#include "fexora/platform/foundation/Export.h"
#include "fexora/platform/foundation/Log.h"

namespace fexora {

// The words for it where a reason is kept as text: short enough to be held without an allocation.
inline constexpr const char* kOutOfMemory = "out of memory";

// One line of at most 512 bytes, "before subject after: out of memory", made without memory of its
// own.
FEXORA_API void logShortage(Log& log, std::string_view before, std::string_view subject = {},
                            std::string_view after = {}) noexcept;

// Calls `body`; false when it ended for want of memory, of which the line tells with `operation`.
// Each `body` leaves its object usable wherever it ends.
template <class Body>
bool guarded(Log& log, std::string_view operation, Body&& body) {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (const std::bad_alloc&) {
    logShortage(log, operation);
    return false;
  }
}

// The same for what `body` answers; `otherwise` takes its place.
template <class Result, class Body>
Result guardedOr(Log& log, std::string_view operation, Result otherwise, Body&& body) {
  guarded(log, operation, [&] { otherwise = std::forward<Body>(body)(); });
  return otherwise;
}

}  // namespace fexora
