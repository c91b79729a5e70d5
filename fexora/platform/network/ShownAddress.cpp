#include "fexora/platform/network/ShownAddress.h"

#include <algorithm>

namespace fexora {
namespace {

constexpr std::string_view kHidden = "***";

std::string withoutQueries(std::string text) {
  for (auto at = text.find('?'); at != std::string::npos; at = text.find('?', at)) {
    const auto begin = ++at;
    at = std::min(text.find(' ', begin), text.size());
    if (at == begin) continue;
    text.replace(begin, at - begin, kHidden);
    at = begin + kHidden.size();
  }
  return text;
}

}  // namespace

std::string shownAddress(std::string_view text) {
  constexpr std::string_view kScheme = "://";
  const auto end = text.rfind('@');
  if (end == std::string_view::npos) return withoutQueries(std::string(text));
  const auto scheme = text.substr(0, end).find(kScheme);
  const auto begin = scheme == std::string_view::npos ? 0 : scheme + kScheme.size();
  return withoutQueries(
      std::string(text.substr(0, begin)).append(kHidden).append(text.substr(end)));
}

}  // namespace fexora
