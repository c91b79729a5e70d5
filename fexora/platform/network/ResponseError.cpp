#include "fexora/platform/network/ResponseError.h"

#include "fexora/platform/text/NumberText.h"

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
    case ResponseError::Kind::implausible:
      return "implausible";
    case ResponseError::Kind::notTrusted:
      return "not trusted";
    case ResponseError::Kind::cancelled:
      return "cancelled";
  }
  return "unknown";
}

std::string ResponseError::forPeople() const {
  switch (kind) {
    case Kind::noTransport:
      return "This computer cannot ask for rates right now.";
    case Kind::noAddress:
      return "The rates service was not found. Is this computer online?";
    case Kind::noConnection:
      return "The rates service could not be reached.";
    case Kind::timeOut:
      return "The rates service took too long to answer.";
    case Kind::httpStatus:
      return "The rates service has no rates right now (" + integerText(status) + ").";
    case Kind::tooLarge:
      return "The answer was too large to be read.";
    case Kind::notJson:
    case Kind::notAnObject:
      return "The answer was not from a rates service. Does this network ask for a login?";
    case Kind::implausible:
      return "The new rates look wrong and were not taken: " + message + ".";
    case Kind::notTrusted:
      return "The rates service could not prove who it is. Is this computer's clock right?";
    case Kind::cancelled:
      return "The request for rates was stopped.";
  }
  return "There are no new rates.";
}

}  // namespace fexora
