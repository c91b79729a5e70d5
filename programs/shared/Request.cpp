#include "programs/shared/Request.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "programs/shared/Currencies.h"
#include "programs/shared/Failure.h"

namespace fexora::program {
namespace {

// Prices in hundredths, as exchanges quote them. What is a code in capitals is told apart by case.
struct Hundredth {
  std::string_view word;
  std::string_view of;
};
constexpr std::array<Hundredth, 4> kHundredths = {
    {{"GBp", "GBP"}, {"GBX", "GBP"}, {"ZAc", "ZAR"}, {"ILA", "ILS"}}};

const Hundredth* hundredth(std::string_view word) {
  const auto* at = std::find_if(kHundredths.begin(), kHundredths.end(),
                                [&](const Hundredth& one) { return one.word == word; });
  return at != kHundredths.end() ? at : nullptr;
}

CurrencyRef sourceNamed(const std::string& word, Request& request) {
  const Hundredth* part = hundredth(word);
  if (part == nullptr) return currencyFromText(word, request.notes);
  request.amount.value /= 100;
  request.notes.push_back(word + " are hundredths of " + std::string(part->of));
  return currencyFromText(part->of, request.notes);
}

void addDestination(const std::string& word, Request& request) {
  const Hundredth* part = hundredth(word);
  if (part != nullptr) {
    request.notes.push_back(word + " are hundredths of " + std::string(part->of) +
                            ", in which the result is");
  }
  const CurrencyRef found =
      currencyFromText(part != nullptr ? part->of : std::string_view(word), request.notes);
  auto& known = request.destinations;
  const bool isNew = std::none_of(known.begin(), known.end(),
                                  [&](const CurrencyRef& one) { return *one == *found; });
  if (isNew) known.push_back(found);
}

}  // namespace

bool isFiller(const std::string& word) {
  constexpr std::array<std::string_view, 5> kFillers = {"in", "to", "into", "as", "="};
  std::string lower = word;
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return std::find(kFillers.begin(), kFillers.end(), lower) != kFillers.end() &&
         findCurrency(word) == nullptr;
}

bool isHundredth(std::string_view word) {
  return hundredth(word) != nullptr;
}

bool namesCurrency(const std::string& text) {
  return isHundredth(text) || findCurrency(text) != nullptr ||
         currencyManager().currencyMeant(text) != nullptr;
}

Request requestOf(const std::vector<std::string>& operands, const std::string& amount) {
  Request request;
  request.amount = amountFromText(amount);
  auto word = operands.begin() + 1;
  if (!request.amount.currency.empty()) {
    request.source = currencyFromText(request.amount.currency, request.notes);
  } else if (word != operands.end()) {
    request.source = sourceNamed(*word++, request);
  } else {
    throw usageFailure("expected a currency after the amount, as in: fexora 100 USD EUR");
  }
  if (word != operands.end() && isFiller(*word)) ++word;
  for (; word != operands.end(); ++word) addDestination(*word, request);
  return request;
}

}  // namespace fexora::program
