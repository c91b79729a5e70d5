#include "fexora/platform/network/ShownAddress.h"

#include <algorithm>

namespace fexora {
namespace {

constexpr std::string_view kHidden = "***";
constexpr std::string_view kScheme = "://";

bool isHost(std::string_view text) {
  const std::string_view name = text.substr(0, text.find(':'));
  text.remove_prefix(std::min(name.size() + 1, text.size()));
  return !name.empty() && text.find_first_not_of("0123456789") == text.npos &&
         std::all_of(name.begin(), name.end(), [](char c) {
           return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                  c == '-' || c == '.';
         });
}

// Whether the sign there begins a part of a path behind the first host.
bool isInPath(std::string_view text, std::size_t at) {
  text = text.substr(0, at);
  const auto scheme = text.find(kScheme);
  if (scheme == text.npos || !text.ends_with('/')) return false;
  text.remove_prefix(scheme + kScheme.size());
  return isHost(text.substr(0, text.find('/')));
}

// Where what is hidden ends.
std::size_t lastSign(std::string_view text) {
  auto at = text.rfind('@');
  while (at != text.npos && isInPath(text, at)) at = text.rfind('@', at - 1);
  return at;
}

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
  const auto end = lastSign(text);
  if (end == std::string_view::npos) return withoutQueries(std::string(text));
  const auto scheme = text.substr(0, end).find(kScheme);
  const auto begin = scheme == std::string_view::npos ? 0 : scheme + kScheme.size();
  return withoutQueries(
      std::string(text.substr(0, begin)).append(kHidden).append(text.substr(end)));
}

}  // namespace fexora
