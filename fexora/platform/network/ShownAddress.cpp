#include "fexora/platform/network/ShownAddress.h"

namespace fexora {

std::string shownAddress(std::string_view text) {
  constexpr std::string_view kScheme = "://";
  const auto end = text.rfind('@');
  if (end == std::string_view::npos) return std::string(text);
  const auto scheme = text.substr(0, end).find(kScheme);
  const auto begin = scheme == std::string_view::npos ? 0 : scheme + kScheme.size();
  return std::string(text.substr(0, begin)).append("***").append(text.substr(end));
}

}  // namespace fexora
