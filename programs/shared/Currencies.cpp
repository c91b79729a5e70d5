#include "programs/shared/Currencies.h"

#include <algorithm>
#include <utility>

#include "fexora/platform/text/AsciiCase.h"

#include "programs/shared/Failure.h"
#include "programs/shared/ShownNames.h"

namespace fexora::program {
namespace {

constexpr std::size_t kOffered = 3;

}  // namespace

CurrencyRef findCurrency(std::string_view typed) {
  if (auto currency = currencyManager().currencyForCode(typed)) return currency;
  return currencyManager().currencyForCode(ascii::uppercased(typed));
}

CurrencyRef currencyFromText(std::string_view typed) {
  if (auto currency = findCurrency(typed)) return currency;
  throw Failure{Exit::noCurrency, "currency",
                "there is no currency \"" + std::string(typed) + "\"; expected a code like USD" +
                    nearText(nearCurrencies(currencyManager(), typed, kOffered))};
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
