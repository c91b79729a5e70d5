#include "programs/fexora/Currencies.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <utility>

#include "programs/fexora/Failure.h"
#include "programs/fexora/Names.h"

namespace fexora::program {
namespace {

constexpr std::size_t kOffered = 4;
// Nearly every name contains one or two given letters.
constexpr std::size_t kShortestSearch = 3;
// Longer texts are no mistyped codes, and the distance takes time by length.
constexpr std::size_t kLongestCode = 16;

std::string upperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return upper;
}

// Insertions, deletions and replacements of one character and exchanges of two neighbours that turn
// `a` into `b` (the restricted edit distance of Damerau and Levenshtein).
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before;
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    before = std::exchange(last, row);
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] =
          std::min({last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1), last[j] + 1, row[j - 1] + 1});
      const bool exchanged = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (exchanged) row[j] = std::min(row[j], before[j - 2] + 1);
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

// What the text may have meant: currencies whose name or code contains it, else similar codes.
std::vector<CurrencyRef> offers(const std::string& typed, const std::string& code) {
  std::vector<CurrencyRef> offered;
  if (typed.size() >= kShortestSearch) {
    offered = currencyManager().currenciesForString(typed, std::int64_t{kOffered}, {});
  }
  if (!offered.empty()) return offered;
  for (const std::string& near : nearestCodes(code)) {
    offered.push_back(currencyManager().currencyForCode(near));
  }
  return offered;
}

}  // namespace

CurrencyRef findCurrency(std::string_view typed) {
  if (auto currency = currencyManager().currencyForCode(typed)) return currency;
  return currencyManager().currencyForCode(upperCase(typed));
}

CurrencyRef currencyFromText(std::string_view typed) {
  if (auto currency = findCurrency(typed)) return currency;
  std::string message =
      "there is no currency \"" + std::string(typed) + "\"; expected a code like USD";
  const char* before = "; near: ";
  for (const CurrencyRef& currency : offers(std::string(typed), upperCase(typed))) {
    message += before + codeAndName(*currency, true);
    before = ", ";
  }
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

std::string listed(const std::vector<std::string>& codes) {
  std::string list;
  for (const std::string& code : codes) list += (list.empty() ? "" : ", ") + code;
  return list;
}

std::vector<std::string> codesOf(const std::vector<CurrencyRef>& currencies) {
  std::vector<std::string> codes;
  codes.reserve(currencies.size());
  for (const CurrencyRef& currency : currencies) codes.push_back(currency->code());
  return codes;
}

}  // namespace fexora::program
