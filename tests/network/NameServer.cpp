// Stands in for the system's name look-up, for every library in the process: the name
// "silent.test" is never answered, "missing.test" does not exist, and all else goes to the system.
#include <dlfcn.h>
#include <netdb.h>
#include <unistd.h>

#include <cstring>

extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char* name,
                                                                  const char* service,
                                                                  const addrinfo* hints,
                                                                  addrinfo** result) {
  if (name != nullptr && std::strcmp(name, "silent.test") == 0) {
    for (;;) pause();
  }
  if (name != nullptr && std::strcmp(name, "missing.test") == 0) return EAI_NONAME;
  using Function = int(const char*, const char*, const addrinfo*, addrinfo**);
  static auto* const next = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "getaddrinfo"));
  return next(name, service, hints, result);
}
