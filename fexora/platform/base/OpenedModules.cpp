// The shared form: modules and resources are files beside the library's own.
#include <dlfcn.h>

#include "fexora/platform/base/Library.h"

namespace fexora {

std::optional<std::string> libraryFolder() {
  Dl_info info{};
  static const char anchor = 0;
  if (dladdr(&anchor, &info) == 0 || info.dli_fname == nullptr) return std::nullopt;
  const std::string_view file = info.dli_fname;
  const auto slash = file.rfind('/');
  return slash == std::string_view::npos ? std::string(".") : std::string(file.substr(0, slash));
}

void* moduleEntry(std::string_view name, const char* entry, std::string& reason) {
  const auto folder = libraryFolder();
  if (!folder) {
    reason = "the library does not know its own folder";
    return nullptr;
  }
  const std::string path =
      *folder + "/" FEXORA_PRIVATE_FOLDER "/fexora_" + std::string(name) + ".so";
  void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* address = module != nullptr ? dlsym(module, entry) : nullptr;
  if (address == nullptr) {
    const char* error = dlerror();
    reason = error != nullptr ? error : "no reason given";
  }
  return address;
}

}  // namespace fexora
