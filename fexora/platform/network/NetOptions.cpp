#include "fexora/platform/network/NetOptions.h"

#include "fexora/platform/base/Environment.h"
#include "fexora/platform/files/ContainerFolder.h"

namespace fexora {
namespace {

std::string cacheFolder() {
  auto cache = environment("XDG_CACHE_HOME");
  if (!cache || !cache->starts_with('/')) {
    cache = environment("HOME");
    if (!cache) return {};
    cache->append("/.cache");
  }
  return cache->append("/fexora");
}

}  // namespace

NetOptions processNetOptions() {
  NetOptions options;
  options.cacheFolder = cacheFolder();
  options.container = containerPath({});
  options.authorities = environment("FEXORA_CA_FILE").value_or("");
  return options;
}

}  // namespace fexora
