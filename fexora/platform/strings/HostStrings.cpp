#include "fexora/platform/strings/HostStrings.h"

#include <atomic>
#include <utility>

#include "fexora/platform/text/Locale.h"

namespace fexora {

HostStrings::~HostStrings() = default;

std::string HostStrings::language() {
  return Locale::currentLanguage();
}

std::uint64_t HostStrings::newGeneration() noexcept {
  static std::atomic<std::uint64_t> last = 0;
  return ++last;
}

std::string localizedString(HostStrings& strings, std::string_view key) {
  auto text = strings.string(key);
  return text ? std::move(*text) : std::string(key);
}

}  // namespace fexora
