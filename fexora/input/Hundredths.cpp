#include "fexora/input/Hundredths.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "fexora/platform/text/AsciiCase.h"

namespace fexora {
namespace {

struct Part {
  std::string_view word, of;
};
constexpr Part kCodesOfHundredths[] = {{"GBX", "GBP"}, {"ZAC", "ZAR"}, {"ILA", "ILS"}};
constexpr std::string_view kPence = "GBp";

constexpr Part kCoins[] = {
    {"agorot", "ILS"}, {"cent", ""},     {"cents", ""},       {"centime", ""},
    {"centimes", ""},  {"centavos", ""}, {"eurocent", "EUR"}, {"eurocents", "EUR"},
    {"pence", "GBP"},  {"penny", "GBP"}, {"pennies", "GBP"},  {"rappen", "CHF"},
    {"paise", "INR"},  {"grosz", "PLN"}, {"groszy", "PLN"},   {"ore", ""},
    {"セント", ""},    {"سنت", ""},      {"سنتات", ""},       {"kopeks", "RUB"},
    {"¢", ""},
};

template <std::size_t N>
std::optional<std::string_view> find(const Part (&parts)[N], std::string_view word) noexcept {
  const auto* const at = std::find_if(std::begin(parts), std::end(parts),
                                      [word](const Part& part) { return part.word == word; });
  return at != std::end(parts) ? std::optional(at->of) : std::nullopt;
}

}  // namespace

std::optional<std::string_view> hundredthsOf(std::string_view word) noexcept {
  if (word.size() != kPence.size()) return std::nullopt;
  if (word == kPence) return "GBP";
  char upper[3];
  std::transform(word.begin(), word.end(), upper, ascii::upper);
  return find(kCodesOfHundredths, std::string_view(upper, word.size()));
}

std::optional<std::string_view> coinsOf(std::string_view word) noexcept {
  return find(kCoins, word);
}

}  // namespace fexora
