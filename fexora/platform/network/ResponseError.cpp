#include "fexora/platform/network/ResponseError.h"

namespace fexora {

const char* text(ResponseError::Kind kind) noexcept {
  switch (kind) {
    case ResponseError::Kind::noTransport:
      return "no transport";
    case ResponseError::Kind::noAddress:
      return "no address";
    case ResponseError::Kind::noConnection:
      return "no connection";
    case ResponseError::Kind::timeOut:
      return "time-out";
    case ResponseError::Kind::httpStatus:
      return "HTTP status";
    case ResponseError::Kind::tooLarge:
      return "too large";
    case ResponseError::Kind::notJson:
      return "not JSON";
    case ResponseError::Kind::notAnObject:
      return "not an object";
  }
  return "unknown";
}

}  // namespace fexora
