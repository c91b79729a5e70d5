#include "fexora/catalogue/CurrencySigns.h"

#include <algorithm>
#include <array>
#include <string>

#include "fexora/catalogue/CurrencySignsTable.h"
#include "fexora/platform/text/TakeUntil.h"

namespace fexora {
namespace {

// Bytes; what is longer is not looked for.
constexpr std::size_t kLongestKey = 64;

// What a line of the table has after its key and the tab; empty when no line has the key.
std::string_view lineOf(std::string_view table, std::string_view key) noexcept {
  // A key with one of the table's own marks in it is none.
  if (key.empty() || key.size() > kLongestKey || key.find_first_of("\t\n") != key.npos) return {};
  std::array<char, kLongestKey + 1> buffer{};
  key.copy(buffer.data(), key.size());
  buffer[key.size()] = '\t';
  const std::string_view cell(buffer.data(), key.size() + 1);
  // By the key's first byte, which is rarer than a line end.
  auto at = table.find(cell);
  while (at != table.npos && table[at - 1] != '\n') at = table.find(cell, at + 1);
  if (at == table.npos) return {};
  const std::string_view rest = table.substr(at + cell.size());
  return rest.substr(0, rest.find('\n'));
}

// Two letters or three digits; a language has no place here, since it comes first.
bool isRegion(std::string_view part) noexcept {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  return part.size() == 2 || (part.size() == 3 && std::all_of(part.begin(), part.end(), isDigit));
}

std::string_view regionOf(std::string_view locale) noexcept {
  takeUntil(locale, '_');
  while (!locale.empty()) {
    const std::string_view part = takeUntil(locale, '_');
    if (isRegion(part)) return part;
  }
  return {};
}

}  // namespace

std::vector<std::string_view> codesOfSign(std::string_view sign) {
  std::vector<std::string_view> codes;
  std::string_view line = lineOf(kCurrencySigns, sign);
  while (!line.empty()) codes.push_back(takeUntil(line, ' '));
  return codes;
}

std::optional<std::string_view> currencyOfLocale(std::string_view locale) {
  std::string name(locale);
  std::replace(name.begin(), name.end(), '-', '_');
  const std::string_view region = regionOf(name);
  std::string_view code = lineOf(kRegionCurrencies, region.empty() ? name : region);
  // A script changes nothing where the table does not name it.
  if (region.empty() && code.empty()) {
    code = lineOf(kRegionCurrencies, std::string_view(name).substr(0, name.find('_')));
  }
  return code.empty() ? std::nullopt : std::optional(code);
}

std::optional<SignReading> readSign(std::string_view sign, std::string_view locale) {
  using Why = SignReading::Why;
  const std::vector<std::string_view> codes = codesOfSign(sign);
  if (codes.empty()) return std::nullopt;
  if (codes.size() == 1) return SignReading{codes.front(), Why::only};
  const auto local = currencyOfLocale(locale);
  if (local && std::find(codes.begin(), codes.end(), *local) != codes.end()) {
    return SignReading{*local, Why::region};
  }
  return SignReading{codes.front(), Why::trade};
}

}  // namespace fexora
