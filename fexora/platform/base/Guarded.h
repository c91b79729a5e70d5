// The library's edges, where exceptions end.
//
// An operation that gets no memory ends there and is said in the log; it does not end the process,
// and nothing is thrown to the host. What a host's own function throws ends there too, and is said.
#pragma once

#include <string_view>
#include <type_traits>
#include <utility>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/base/Log.h"

namespace fexora {

// The words for it where a reason is kept as text: short enough to be held without an allocation.
inline constexpr const char* kOutOfMemory = "out of memory";

// What the two edges call: a function and what it works on, so that neither needs memory.
struct EdgeCall {
  template <class Body>
  explicit EdgeCall(Body& body) noexcept
      : subject(const_cast<void*>(static_cast<const void*>(&body))),
        run([](void* of) { (*static_cast<Body*>(of))(); }) {}

  void* subject;
  void (*run)(void* subject);
};

FEXORA_API bool callGuarded(Log& log, std::string_view operation, EdgeCall call);
FEXORA_API void callQuietly(Log& log, std::string_view what, EdgeCall call) noexcept;

// Calls `body`; false when memory ran out, of which the line tells with `operation`.
// Each `body` leaves its object usable wherever it ends.
template <class Body>
bool guarded(Log& log, std::string_view operation, Body&& body) {
  return callGuarded(log, operation, EdgeCall(body));
}

// The same for what `body` answers; `otherwise` takes its place.
template <class Result, class Body>
Result guardedOr(Log& log, std::string_view operation, Result otherwise, Body&& body) {
  guarded(log, operation, [&] { otherwise = std::forward<Body>(body)(); });
  return otherwise;
}

// Calls a function of the host's; what it throws is dropped, with one line that begins with `what`
// ("A completion of loadRates").
template <class Function>
void quietly(Log& log, std::string_view what, Function&& function) noexcept {
  callQuietly(log, what, EdgeCall(function));
}

}  // namespace fexora
