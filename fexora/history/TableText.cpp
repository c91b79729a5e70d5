#include "fexora/history/TableText.h"

#include <algorithm>
#include <cmath>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/platform/text/TakeUntil.h"

namespace fexora {
namespace {

constexpr std::size_t kCodeLength = 32;
constexpr std::size_t kFigureLength = 64;
constexpr std::size_t kSourceLength = 64;

bool isFigureDigit(char c) noexcept {
  return c >= '0' && c <= '9';
}

// Digits with one point at most and one of them above zero: within the length of a figure they are
// far from what a double cannot hold.
bool isPlainFigure(std::string_view text) noexcept {
  unsigned digits = 0;
  int points = 0;
  for (const char c : text) {
    const auto digit = static_cast<unsigned char>(c - '0');
    if (digit <= 9) {
      digits |= digit;
    } else if (c == '.') {
      ++points;
    } else {
      return false;
    }
  }
  return digits != 0 && points <= 1;
}

bool isSourceName(std::string_view text) noexcept {
  const auto isPrinted = [](char c) { return c > ' ' && c < '\x7F'; };
  return !text.empty() && text.size() <= kSourceLength &&
         std::all_of(text.begin(), text.end(), isPrinted);
}

}  // namespace

bool isTableCode(std::string_view text) noexcept {
  const auto isCodeCharacter = [](char c) {
    return isFigureDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  };
  return !text.empty() && text.size() <= kCodeLength &&
         std::all_of(text.begin(), text.end(), isCodeCharacter);
}

bool isFigure(std::string_view text) noexcept {
  if (text.empty() || text.size() > kFigureLength) return false;
  if (isPlainFigure(text)) return true;
  if (!isFigureDigit(text.front()) && text.front() != '.') return false;
  const auto value = parseDouble(text);
  return value && std::isfinite(*value) && *value > 0 && std::isfinite(1 / *value);
}

std::string tableText(const PublishedTable& table) {
  std::vector<const std::pair<std::string, std::string>*> lines;
  lines.reserve(table.figures.size());
  for (const auto& line : table.figures) {
    if (line.first != table.base) lines.push_back(&line);
  }
  const auto isBefore = [](const auto* a, const auto* b) { return a->first < b->first; };
  const auto isNotBefore = [&](const auto* a, const auto* b) { return !isBefore(a, b); };
  // Most tables are printed in this order, and all were that are merged with one that was kept.
  if (std::adjacent_find(lines.begin(), lines.end(), isNotBefore) != lines.end()) {
    std::stable_sort(lines.begin(), lines.end(), isBefore);
    lines.erase(std::unique(lines.begin(), lines.end(), isNotBefore), lines.end());
  }
  std::string text;
  if (lines.empty()) return text;
  std::size_t size = 1;
  for (const auto* line : lines) size += line->first.size() + line->second.size() + 2;
  text.resize(size);
  char* at = text.data();
  *at++ = '\n';
  for (const auto* line : lines) {
    at = std::copy(line->first.begin(), line->first.end(), at);
    *at++ = ' ';
    at = std::copy(line->second.begin(), line->second.end(), at);
    *at++ = '\n';
  }
  return text;
}

void readTableText(std::string_view text, PublishedTable& into) {
  while (!text.empty()) {
    const std::string_view line = takeUntil(text, '\n');
    const auto blank = line.find(' ');
    if (blank == std::string_view::npos) continue;
    into.figures.emplace_back(line.substr(0, blank), line.substr(blank + 1));
  }
}

std::size_t countFigures(std::string_view text) noexcept {
  const auto ends = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  return ends == 0 ? 0 : ends - 1;
}

std::string_view figureOf(std::string_view text, std::string_view code) noexcept {
  // The lines between are [low, high): both stand behind a line's end.
  std::size_t low = std::min<std::size_t>(1, text.size());
  std::size_t high = text.size();
  while (low < high) {
    const std::size_t middle = low + (high - low) / 2;
    const std::size_t begin = text.rfind('\n', middle - 1) + 1;  // the text begins with one
    const std::size_t end = text.find('\n', middle);
    if (begin < low || end == std::string_view::npos) return {};
    const std::string_view line = text.substr(begin, end - begin);
    const std::string_view found = line.substr(0, line.find(' '));
    if (found == code) return line.substr(std::min(found.size() + 1, line.size()));
    if (found < code) {
      low = end + 1;
    } else {
      high = begin;
    }
  }
  return {};
}

std::string tableFault(const PublishedTable& table) {
  const auto named = [&](const std::string& what) {
    return "the table of " + isoText(table.day) + " from " + table.source.substr(0, kSourceLength) +
           ": " + what;
  };
  if (!isSourceName(table.source)) return "the table of " + isoText(table.day) + " has no source";
  if (dayFromIsoText(isoText(table.day)) != table.day)
    return named("its day is not from 1900 to 2199");
  if (!isTableCode(table.base)) return named("it does not say which currency it quotes");
  std::size_t bytes = 0;
  for (const auto& [code, figure] : table.figures) {
    if (!isTableCode(code)) {
      return named("\"" + code.substr(0, kCodeLength) + "\" is no currency code");
    }
    if (!isFigure(figure)) {
      return named(code + ": \"" + figure.substr(0, kFigureLength) +
                   "\" is no finite and positive figure");
    }
    bytes += code.size() + figure.size() + 2;
  }
  if (bytes == 0) return named("it has no figures");
  return bytes < limits::kHistoryTableBytes ? std::string() : named("it is too large");
}

}  // namespace fexora
