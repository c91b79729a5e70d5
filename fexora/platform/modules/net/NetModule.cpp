#include <type_traits>

#include "fexora/platform/modules/ModuleEntries.h"
#include "fexora/platform/modules/net/CurlTransport.h"

namespace {

// The one thing that is taken down at exit: the worker must have ended before the libraries that it
// runs in are. The transport itself stays, in case something of the host's still asks it.
struct ProcessTransport {
  fexora::CurlTransport* transport;
  ~ProcessTransport() {
    if (transport != nullptr) transport->stop();
  }
};

static_assert(std::is_same_v<decltype(fexora_net_module), fexora::NetModuleEntry>);

}  // namespace

fexora::Transport* fexora_net_module(fexora::RunLoop* loop, fexora::Log* log, fexora::Files* files,
                                     const fexora::NetOptions* options) {
  static const ProcessTransport process{
      fexora::CurlTransport::make(*loop, *log, *files, *options).release()};
  return process.transport;
}
