#include "programs/fexora/Currencies.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <utility>

#include "programs/fexora/Failure.h"
#include "programs/fexora/Names.h"

namespace fexora::program {
namespace {

constexpr std::size_t kOffered = 3;
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

// What the text may have meant.
std::vector<CurrencyRef> offers(std::string_view typed) {
  auto offered = currencyManager().rankedCurrencies(typed, std::int64_t{kOffered}, {});
  return offered.empty() ? nearestCurrencies(typed) : offered;
}

bool isMoneyInUse(const Currency& currency) {
  const CurrencyFacts* facts = currencyFacts(currency.code());
  return facts == nullptr ||
         (facts->kind != CurrencyKind::withdrawn && facts->kind != CurrencyKind::crypto);
}

// The one currency whose name or country the text is; null when several may be meant.
CurrencyRef currencyByName(std::string_view typed) {
  constexpr std::int64_t kMost = 16;
  std::vector<CurrencyRef> found = currencyManager().rankedCurrencies(typed, kMost, {});
  const std::string folded = Text::process().folded(typed);
  for (const CurrencyRef& currency : found) {
    if (Text::process().folded(nameOf(*currency)) == folded) return currency;
  }
  std::erase_if(found, [](const CurrencyRef& currency) { return !isMoneyInUse(*currency); });
  return found.size() == 1 ? found.front() : nullptr;
}

}  // namespace

CurrencyRef findCurrency(std::string_view typed) {
  if (auto currency = currencyManager().currencyForCode(typed)) return currency;
  return currencyManager().currencyForCode(upperCase(typed));
}

std::vector<CurrencyRef> nearestCurrencies(std::string_view typed) {
  const std::string code = upperCase(typed);
  if (code.empty() || code.size() > kLongestCode) return {};
  std::vector<std::pair<std::size_t, CurrencyRef>> near;
  for (const CurrencyRef& currency : currencyManager().currencies()) {
    const std::size_t steps = distance(code, currency->code());
    if (steps <= 2 && steps < code.size()) near.emplace_back(steps, currency);
  }
  // In the catalogue's order where the distance is the same: the most traded first.
  std::stable_sort(near.begin(), near.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<CurrencyRef> currencies;
  for (auto& [steps, currency] : near) {
    if (currencies.size() < kOffered) currencies.push_back(std::move(currency));
  }
  return currencies;
}

CurrencyRef currencyFromText(std::string_view typed) {
  if (auto currency = findCurrency(typed)) return currency;
  throw Failure{Exit::noCurrency, "currency",
                "there is no currency \"" + std::string(typed) + "\"; expected a code like USD" +
                    nearText(offers(typed))};
}

CurrencyRef currencyFromText(std::string_view typed, std::vector<std::string>& notes) {
  if (auto currency = findCurrency(typed)) return currency;
  auto currency = currencyByName(typed);
  if (currency == nullptr) return currencyFromText(typed);
  notes.push_back("\"" + std::string(typed) + "\" was read as " + codeAndName(*currency, true));
  return currency;
}

std::string nearText(const std::vector<CurrencyRef>& currencies) {
  std::string text;
  for (const CurrencyRef& currency : currencies) {
    text += (text.empty() ? "; near: " : ", ") + codeAndName(*currency, true);
  }
  return text;
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
