#include "programs/fexora/Withdrawn.h"

namespace fexora::program {

std::optional<std::string> withdrawnNotice(const Currency& currency) {
  const CurrencyFacts* facts = currencyFacts(currency.code());
  if (facts == nullptr || facts->kind != CurrencyKind::withdrawn) return std::nullopt;
  if (facts->successor.empty()) {
    return currency.code() + " is no longer money" +
           (facts->lastDay.empty() ? "" : " since " + std::string(facts->lastDay));
  }
  const std::string successor(facts->successor);
  std::string notice = currency.code() + " was replaced by " + successor;
  constexpr std::size_t kWholeDate = 10;
  if (!facts->replaced.empty()) {
    notice +=
        (facts->replaced.size() == kWholeDate ? " on " : " in ") + std::string(facts->replaced);
  }
  if (facts->hasRatio()) {
    const NumberFormat format(0, true);
    notice += " (" + format.exact(facts->successorUnits) + " " + successor + " = " +
              format.exact(facts->units) + " " + currency.code() + ")";
  }
  return notice;
}

}  // namespace fexora::program
