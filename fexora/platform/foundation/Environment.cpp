#include "fexora/platform/foundation/Environment.h"

#include <cstdlib>

namespace fexora {

std::optional<std::string> environment(const char* variable) {
  const char* value = secure_getenv(variable);
  if (value == nullptr || *value == '\0') return std::nullopt;
  return value;
}

}  // namespace fexora
