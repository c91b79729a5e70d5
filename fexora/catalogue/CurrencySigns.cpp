#include "fexora/catalogue/CurrencySigns.h"

#include <algorithm>
#include <string>

#include "fexora/catalogue/CurrencySignsTable.h"
#include "fexora/platform/text/TakeUntil.h"

namespace fexora {
namespace {

// What a line of the table has after its key and the tab; empty when no line has the key.
std::string_view lineOf(std::string_view table, std::string_view key) noexcept {
  table.remove_prefix(1);
  while (!key.empty() && !table.empty()) {
    // The line in whose middle the table's lies.
    const std::size_t start = table.rfind('\n', table.size() / 2 - 1) + 1;
    std::string_view rest = table.substr(start);
    std::string_view line = takeUntil(rest, '\n');
    const int order = takeUntil(line, '\t').compare(key);
    if (order == 0) return line;
    table = order < 0 ? rest : table.substr(0, start);
  }
  return {};
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
  std::string_view codes = lineOf(kCurrencySigns, sign);
  const std::string_view first = takeUntil(codes, ' ');
  if (first.empty()) return std::nullopt;
  if (codes.empty()) return SignReading{first, Why::only};
  const auto local = currencyOfLocale(locale);
  if (local == first) return SignReading{first, Why::region};
  while (local && !codes.empty()) {
    if (takeUntil(codes, ' ') == *local) return SignReading{*local, Why::region};
  }
  return SignReading{first, Why::trade};
}

}  // namespace fexora
