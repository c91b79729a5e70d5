#include "fexora/catalogue/NearCurrencies.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "fexora/catalogue/MostTraded.h"
#include "fexora/catalogue/OneSlip.h"

namespace fexora {
namespace {

// As long as the longest code and one letter too many.
constexpr std::size_t kLongest = 16;

std::string upperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  return upper;
}

}  // namespace

std::vector<CurrencyRef> nearCurrencies(const CurrencyManager& catalogue, std::string_view text,
                                        std::size_t limit) {
  auto near = catalogue.rankedCurrencies(text, static_cast<std::int64_t>(limit));
  // A single letter is one slip away from everything.
  if (!near.empty() || text.size() < 2 || text.size() > kLongest) return near;
  const std::string code = upperCase(text);
  for (const CurrencyRef& currency : catalogue.currencies()) {
    const std::size_t length = currency->code().size();
    const bool isAsLong = length <= code.size() + 1 && code.size() <= length + 1;
    if (isAsLong && beginsButForOneSlip(currency->code(), code)) near.push_back(currency);
  }
  std::stable_sort(near.begin(), near.end(), [](const CurrencyRef& a, const CurrencyRef& b) {
    return tradedPlace(a->code()) < tradedPlace(b->code());
  });
  near.resize(std::min(near.size(), limit));
  return near;
}

}  // namespace fexora
