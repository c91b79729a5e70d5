#include "programs/fexora/Currencies.h"

#include <algorithm>
#include <cctype>
#include <numeric>

#include "programs/fexora/Failure.h"

namespace fexora::program {
namespace {

constexpr std::size_t kOffered = 4;
// Longer texts are no mistyped codes, and the distance takes time by length.
constexpr std::size_t kLongestCode = 16;

std::string upperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return upper;
}

// Insertions, deletions and replacements of one character that turn `a` into `b` (Levenshtein).
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

std::vector<std::string> nearestCodes(const std::string& code) {
  if (code.empty() || code.size() > kLongestCode) return {};
  std::vector<std::pair<std::size_t, std::string>> near;
  for (const CurrencyRef& currency : currencyManager().currencies()) {
    const std::size_t steps = distance(code, currency->code());
    if (steps <= 2 && steps < code.size()) near.emplace_back(steps, currency->code());
  }
  // In the catalogue's order where the distance is the same: the most traded first.
  std::stable_sort(near.begin(), near.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::string> codes;
  for (auto& [steps, name] : near) {
    if (codes.size() < kOffered) codes.push_back(std::move(name));
  }
  return codes;
}

}  // namespace

CurrencyRef currencyFromText(std::string_view typed) {
  if (auto currency = currencyManager().currencyForCode(typed)) return currency;
  const std::string code = upperCase(typed);
  if (auto currency = currencyManager().currencyForCode(code)) return currency;
  std::string message =
      "there is no currency \"" + std::string(typed) + "\"; expected a code like USD";
  const auto near = nearestCodes(code);
  for (std::size_t i = 0; i < near.size(); ++i) message += (i == 0 ? "; near: " : ", ") + near[i];
  throw Failure{Exit::noCurrency, "currency", message};
}

std::vector<CurrencyRef> currenciesFromTexts(const std::vector<std::string>& typed) {
  std::vector<CurrencyRef> currencies;
  for (const std::string& text : typed) {
    auto currency = currencyFromText(text);
    const bool known = std::any_of(currencies.begin(), currencies.end(),
                                   [&](const CurrencyRef& one) { return *one == *currency; });
    if (!known) currencies.push_back(std::move(currency));
  }
  return currencies;
}

std::vector<std::string> codesOf(const std::vector<CurrencyRef>& currencies) {
  std::vector<std::string> codes;
  codes.reserve(currencies.size());
  for (const CurrencyRef& currency : currencies) codes.push_back(currency->code());
  return codes;
}

}  // namespace fexora::program
