#include "programs/fexora/Waiting.h"

#include "fexora/platform/network/ShownAddress.h"
#include "fexora/platform/text/OneLine.h"

#include "programs/fexora/Progress.h"
#include "programs/shared/Failure.h"

namespace fexora::program {

const char* kindOf(const ResponseError& error) {
  switch (error.kind) {
    case ResponseError::Kind::noTransport:
      return "noTransport";
    case ResponseError::Kind::noAddress:
      return "noAddress";
    case ResponseError::Kind::noConnection:
      return "noConnection";
    case ResponseError::Kind::timeOut:
      return "timeOut";
    case ResponseError::Kind::httpStatus:
      return "httpStatus";
    case ResponseError::Kind::tooLarge:
      return "tooLarge";
    case ResponseError::Kind::notJson:
      return "notJson";
    case ResponseError::Kind::notAnObject:
      return "notAnObject";
    case ResponseError::Kind::implausible:
      return "implausible";
    case ResponseError::Kind::notTrusted:
      return "notTrusted";
    case ResponseError::Kind::cancelled:
      return "cancelled";
  }
  return "network";
}

void waitFor(const sources::SourceStep& step, const Transfer::Progress& received,
             const bool& ended) {
  const std::string address = step.addresses.empty() ? "" : shownAddress(step.addresses.front());
  const Progress progress(oneLine("loading rates from " + address), received);
  Platform::process().loop->runUntil([&] { return ended; });
  if (!ended) throw Failure{Exit::network, "noLoop", "there is no loop to wait with; see the log"};
}

}  // namespace fexora::program
