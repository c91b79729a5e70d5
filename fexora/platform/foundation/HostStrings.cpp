#include "fexora/platform/foundation/HostStrings.h"

namespace fexora {

HostStrings::~HostStrings() = default;

std::string localizedString(HostStrings& strings, std::string_view key) {
  auto text = strings.string(key);
  return text ? std::move(*text) : std::string(key);
}

}  // namespace fexora
