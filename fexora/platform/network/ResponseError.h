// Why a request brought no answer.
#pragma once

#include <cstdint>
#include <string>

#include "fexora/platform/base/Export.h"

namespace fexora {

struct FEXORA_API ResponseError {
  enum class Kind : std::uint8_t {
    noTransport,   // this build or process cannot send requests
    noAddress,     // the address is malformed or its host has no address
    noConnection,  // refused, reset, or broken off before the answer was whole
    timeOut,
    httpStatus,  // any but 200 and 304; see `status`
    tooLarge,    // more than the limits in base/Limits.h
    notJson,
    notAnObject,  // JSON, but not an object at its root
    implausible,  // whole, but a check did not take it: see rates/AnswerCheck.h
    notTrusted,   // its certificate is not to be trusted: expired, another's, or nobody's
    cancelled,    // by who sent the request: see Transfer.h
  };

  Kind kind = Kind::noTransport;
  std::string address;  // what was asked for, without user and secret: see ShownAddress.h
  std::string message;  // one line for the log, naming the address and the cause
  int status = 0;       // the HTTP status with kind httpStatus, else 0

  // One line for a person who knows neither addresses nor protocols. English. May throw
  // std::bad_alloc.
  std::string forPeople() const;
};

// The kind in words, as in "no connection".
FEXORA_API const char* text(ResponseError::Kind kind) noexcept;

}  // namespace fexora
