#include "programs/shared/Currencies.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "programs/shared/EditDistance.h"
#include "programs/shared/Failure.h"
#include "programs/shared/ShownNames.h"

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

// What the text may have meant.
std::vector<CurrencyRef> offers(std::string_view typed) {
  auto offered = currencyManager().rankedCurrencies(typed, std::int64_t{kOffered}, {});
  return offered.empty() ? nearestCurrencies(typed) : offered;
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
    const std::size_t steps = editDistance(code, currency->code());
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
  auto currency = currencyManager().currencyMeant(typed);
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
