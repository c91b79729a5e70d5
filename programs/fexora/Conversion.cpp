#include "programs/fexora/Conversion.h"

#include <cmath>
#include <utility>

#include "programs/fexora/Store.h"
#include "programs/fexora/Withdrawn.h"
#include "programs/shared/Currencies.h"
#include "programs/shared/Failure.h"
#include "programs/shared/PairFinder.h"
#include "programs/shared/Selection.h"
#include "programs/shared/SentenceText.h"

namespace fexora::program {
namespace {

// What is asked for: currencies, and the stored selection's codes that are none.
struct Wanted {
  std::vector<CurrencyRef> currencies;
  std::vector<std::string> unknown;
};

Wanted selection(const StoreManager& store, const CurrencyRef& source) {
  Wanted wanted;
  const auto lines = linesOf(store.loadCurrencies(), *source);
  for (const CurrencyRef& line : lines) {
    if (currencyManager().hasCurrency(line->code())) {
      wanted.currencies.push_back(line);
    } else {
      wanted.unknown.push_back(line->code());
    }
  }
  if (lines.empty()) {
    throw Failure{Exit::noCurrency, "currency",
                  "the stored selection has no currency but " + source->code() +
                      "; name one, as in: fexora 100 USD EUR"};
  }
  if (wanted.currencies.empty()) currencyFromText(wanted.unknown.front());  // throws, with offers
  return wanted;
}

// The lines, and the codes of those currencies for which there is no rate.
std::vector<std::string> addLines(const std::vector<CurrencyRef>& wanted, const StoreManager& store,
                                  Conversion& result) {
  std::vector<std::string> noRates;
  const PairFinder pairs(rateManager(), store);
  for (const CurrencyRef& destination : wanted) {
    const auto found = *result.source == *destination
                           ? std::optional(PairFinder::Found{{result.source, destination, 1}, {}})
                           : pairs.find(result.source, destination);
    if (found) {
      result.lines.push_back({ConvertedItem(found->rate, result.amount.value, result.invert),
                              found->of, std::nullopt});
    } else {
      noRates.push_back(destination->code());
    }
  }
  return noRates;
}

// " on 2024-03-01 or in the 7 days before it"
std::string dayAndReach(const PastDay& on) {
  const int days = on.question.atMostBefore;
  const std::string reach = std::to_string(days) + (days == 1 ? " day" : " days") + " before it";
  if (on.day != on.asked) return " before " + isoText(on.asked) + ", " + reach + " at most";
  return " on " + isoText(on.asked) + (days == 0 ? std::string() : " or in the " + reach);
}

// The same by the rates of a past day, all of them asked for at once.
std::vector<std::string> addPastLines(const std::vector<CurrencyRef>& wanted, StoreManager& store,
                                      Conversion& result) {
  const std::vector<std::string> codes = codesOf(wanted);
  const PastDay& on = *result.on;
  const auto rates = history(store).on(on.day, result.source->code(), codes, on.question);
  std::vector<std::string> noRates;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const bool isSame = *result.source == *wanted[i];
    if (!isSame && !rates[i]) {
      noRates.push_back(codes[i]);
      continue;
    }
    const Rate rate(result.source, wanted[i], isSame ? 1.0 : rates[i]->rate);
    result.lines.push_back(
        {ConvertedItem(rate, result.amount.value, result.invert), std::nullopt, rates[i]});
  }
  if (!history(store).problem().empty()) result.notices.push_back(history(store).problem());
  return noRates;
}

// Says what cannot be converted; throws a Failure when nothing can.
void tellMissing(const std::vector<std::string>& unknown, const std::vector<std::string>& noRates,
                 StoreManager& store, Conversion& result) {
  if (!unknown.empty()) {
    result.problem = "the stored selection holds what is no currency: " + listed(unknown);
  }
  if (!noRates.empty()) {
    result.problem += (unknown.empty() ? "there is no rate from " : "; there is no rate from ") +
                      result.source->code() + " to " + listed(noRates);
    if (result.on)
      result.problem += dayAndReach(*result.on) + whatIsKept(history(store), result.on->day);
  }
  if (result.lines.empty()) {
    throw Failure{Exit::noCurrency, unknown.empty() ? "rate" : "currency", result.problem};
  }
  result.missing = unknown;
  result.missing.insert(result.missing.end(), noRates.begin(), noRates.end());
}

void round(ConvertedItem& item, const Currency& shownIn) {
  if (const CurrencyFacts* facts = currencyFacts(shownIn.code())) {
    item.dstAmount = roundedToMinorUnit(item.dstAmount.doubleValue(), *facts, Rounding::halfUp);
  }
}

void addNotices(const Sentence& sentence, Conversion& result) {
  for (std::string& text : noticeTexts(sentence)) result.notices.push_back(std::move(text));
  const auto addWithdrawn = [&](const Currency& currency) {
    if (auto notice = withdrawnNotice(currency)) result.notices.push_back(*std::move(notice));
  };
  addWithdrawn(*result.source);
  for (const ConversionLine& line : result.lines) {
    addWithdrawn(*line.item.dstCurrency);
    if (!std::isfinite(line.item.dstAmount.doubleValue())) {
      result.notices.push_back("the result for " + line.item.dstCurrency->code() +
                               " is no finite number");
    }
  }
}

void finish(const Sentence& sentence, const CommandLine& line, Conversion& result) {
  if (line.rounded) {
    for (ConversionLine& each : result.lines) {
      ConvertedItem& item = each.item;
      round(item, result.invert ? *item.srcCurrency : *item.dstCurrency);
    }
  }
  addNotices(sentence, result);
}

}  // namespace

Conversion conversionOf(const Sentence& sentence, const CommandLine& line, StoreManager& store,
                        bool sync, const std::optional<PastDay>& on) {
  Conversion result;
  result.amount = sentence.amount;
  result.source = sentence.source;
  result.invert = line.invert;
  const Wanted wanted = sentence.destinations.empty() ? selection(store, result.source)
                                                      : Wanted{sentence.destinations, {}};
  result.on = on;
  if (on) {
    result.origin = "history";
    tellMissing(wanted.unknown, addPastLines(wanted.currencies, store, result), store, result);
    finish(sentence, line, result);
    return result;
  }
  seedBundledRates(store);
  if (hasBundledRates(store)) result.origin = "bundled";
  auto selected = wanted.currencies;
  selected.push_back(result.source);
  rateManager().loadStoredRates(std::move(selected));
  // The store keeps the amount only when there is an answer.
  tellMissing(wanted.unknown, addLines(wanted.currencies, store, result), store, result);
  finish(sentence, line, result);
  store.saveSourceCurrency(result.source, result.amount.value, sync);
  return result;
}

}  // namespace fexora::program
