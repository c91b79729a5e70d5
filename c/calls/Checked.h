// What the calls have in common.
#pragma once

#include <utility>

#include "c/Codes.h"
#include "c/Given.h"
#include "c/Outcome.h"
#include "c/Session.h"

namespace fexora::c {

inline Outcome unfitSession(const fexora_session* session) {
  if (session == nullptr) return misuse("no session is given");
  return misuse("the session is of another process, from which this one was forked");
}

// Runs the body of a call on a session that this process may use.
template <class Body>
int withSession(fexora_session* session, fexora_error* error, Body&& body) noexcept {
  return answered(error, [&]() -> Outcome {
    if (session == nullptr || !session->isOfThisProcess()) return unfitSession(session);
    return std::forward<Body>(body)();
  });
}

}  // namespace fexora::c
