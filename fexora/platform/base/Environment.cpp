#include "fexora/platform/base/Environment.h"

#include <cstdlib>

#include <sys/auxv.h>

namespace fexora {

std::optional<std::string> environment(const char* variable) {
  const char* value = secure_getenv(variable);
  if (value == nullptr || *value == '\0') return std::nullopt;
  return value;
}

bool hasMoreRightsThanItsUser() noexcept {
  return getauxval(AT_SECURE) != 0;
}

}  // namespace fexora
