#include <cstdlib>
#include <type_traits>

#include "fexora/platform/base/Environment.h"
#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/network/curl/CurlTransport.h"

namespace {

// The one thing that is taken down at exit: the worker must have ended before the libraries that it
// runs in are. The transport itself stays, in case something of the host's still asks it.
struct ProcessTransport {
  fexora::CurlTransport* transport;
  ~ProcessTransport() {
    if (transport != nullptr) transport->stop();
  }
};

// libcurl writes each connection's keys into the file that this variable names, and cannot be told
// not to: with more rights than its user has, the process would write where its user may not.
bool writesKeysWhereTheUserSays() {
  return fexora::hasMoreRightsThanItsUser() && std::getenv("SSLKEYLOGFILE") != nullptr;
}

static_assert(std::is_same_v<decltype(fexora_net_module), fexora::NetModuleEntry>);

}  // namespace

fexora::Transport* fexora_net_module(fexora::RunLoop* loop, fexora::Log* log, fexora::Files* files,
                                     const fexora::NetOptions* options) {
  static const ProcessTransport process{
      writesKeysWhereTheUserSays()
          ? nullptr
          : fexora::CurlTransport::make(*loop, *log, *files, *options).release()};
  return process.transport;
}
