#include "fexora/platform/network/OwnTransport.h"

#include "fexora/platform/base/Library.h"

namespace fexora {

std::unique_ptr<Transport> ownTransport(RunLoop& loop, Log& log, Files& files,
                                        const NetOptions& options, std::string& problem) {
  void* const entry = moduleEntry("net", "fexora_net_own", problem);
  if (entry == nullptr) return nullptr;
  std::unique_ptr<Transport> transport(
      reinterpret_cast<NetModuleEntry*>(entry)(&loop, &log, &files, &options));
  if (transport == nullptr) problem = "the machine gives no thread or descriptor";
  return transport;
}

}  // namespace fexora
