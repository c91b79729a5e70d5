#include "tests/network/NameServer.h"

#include <cstring>

#include <dlfcn.h>
#include <netdb.h>
#include <unistd.h>

namespace fexora::test {

std::atomic<int> silentNameAsked{-1};

}  // namespace fexora::test

extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char* name,
                                                                  const char* service,
                                                                  const addrinfo* hints,
                                                                  addrinfo** result) {
  if (name != nullptr && std::strcmp(name, "silent.test") == 0) {
    [[maybe_unused]] const ssize_t told = write(fexora::test::silentNameAsked, "!", 1);
    for (;;) pause();
  }
  if (name != nullptr && std::strcmp(name, "missing.test") == 0) return EAI_NONAME;
  using Function = int(const char*, const char*, const addrinfo*, addrinfo**);
  static auto* const next = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "getaddrinfo"));
  return next(name, service, hints, result);
}
