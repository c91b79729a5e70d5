#include "fexora/platform/text/AsciiText.h"

namespace fexora::ascii {
namespace {

// Whether a character ends before byte `at`: not inside a UTF-8 sequence, not between CR and LF.
bool isBoundary(std::string_view text, std::size_t at) noexcept {
  if (at == 0 || at == text.size()) return true;
  if ((static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80) return false;
  return text[at - 1] != '\r' || text[at] != '\n';
}

}  // namespace

std::size_t characterCount(std::string_view text) noexcept {
  std::size_t count = 0;
  for (std::size_t end = 1; end <= text.size(); ++end) count += isBoundary(text, end) ? 1 : 0;
  return count;
}

std::vector<std::size_t> characterEnds(std::string_view text) {
  std::vector<std::size_t> ends;
  ends.reserve(text.size());
  for (std::size_t end = 1; end <= text.size(); ++end) {
    if (isBoundary(text, end)) ends.push_back(end);
  }
  return ends;
}

bool contains(std::string_view whole, std::string_view part) noexcept {
  if (part.empty()) return false;
  for (auto at = whole.find(part); at != std::string_view::npos; at = whole.find(part, at + 1)) {
    if (isBoundary(whole, at) && isBoundary(whole, at + part.size())) return true;
  }
  return false;
}

}  // namespace fexora::ascii
