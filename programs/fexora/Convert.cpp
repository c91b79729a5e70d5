// The main job: one amount into the currencies that were asked for, from what is at hand.
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "programs/fexora/Calculation.h"
#include "programs/fexora/Commands.h"
#include "programs/fexora/Currencies.h"
#include "programs/fexora/Failure.h"
#include "programs/fexora/Names.h"
#include "programs/fexora/NumberColumn.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Store.h"

namespace fexora::program {
namespace {

// What is asked for: currencies, and the stored selection's codes that are none.
struct Wanted {
  std::vector<CurrencyRef> currencies;
  std::vector<std::string> unknown;
};

struct Conversion {
  double amount;
  CurrencyRef source;
  bool invert;
  const char* origin;
  std::vector<ConvertedItem> items;
  std::vector<std::string> missing;  // codes
  std::string problem;               // says why they are
};

std::string noRateText(const Currency& source, const std::vector<std::string>& destinations) {
  const bool same = destinations.size() == 1 && destinations.front() == source.code();
  return "there is no rate from " + source.code() + " to " + listed(destinations) +
         (same ? ": they are the same currency" : "");
}

Wanted selection(const StoreManager& store, const CurrencyRef& source) {
  Wanted wanted;
  std::set<std::string> seen = {source->code()};
  for (const std::string& code : codesOf(store.loadCurrencies())) {
    auto currency = findCurrency(code);
    if (!seen.insert(currency != nullptr ? currency->code() : code).second) continue;
    if (currency != nullptr) {
      wanted.currencies.push_back(std::move(currency));
    } else {
      wanted.unknown.push_back(code);
    }
  }
  if (seen.size() == 1) {
    throw Failure{Exit::noCurrency, "currency",
                  "the stored selection has no currency but " + source->code() +
                      "; name one, as in: fexora 100 USD EUR"};
  }
  if (wanted.currencies.empty()) currencyFromText(wanted.unknown.front());  // throws, with offers
  return wanted;
}

Wanted wantedBy(const CommandLine& line, const StoreManager& store, const CurrencyRef& source) {
  if (line.operands.size() == 2) return selection(store, source);
  return {currenciesFromTexts({line.operands.begin() + 2, line.operands.end()}), {}};
}

// Sorts out what cannot be converted; throws a Failure when nothing is left.
void keepConvertible(Wanted& wanted, Conversion& result) {
  std::vector<std::string> noRates;
  std::erase_if(wanted.currencies, [&](const CurrencyRef& destination) {
    if (rateManager().rateForSourceCurrency(result.source, destination)) return false;
    noRates.push_back(destination->code());
    return true;
  });
  const bool allKnown = wanted.unknown.empty();
  if (!allKnown) {
    result.problem = "the stored selection holds what is no currency: " + listed(wanted.unknown);
  }
  if (!noRates.empty()) {
    result.problem += (allKnown ? "" : "; ") + noRateText(*result.source, noRates);
  }
  if (wanted.currencies.empty()) {
    throw Failure{Exit::noCurrency, allKnown ? "rate" : "currency", result.problem};
  }
  result.missing = std::move(wanted.unknown);
  result.missing.insert(result.missing.end(), noRates.begin(), noRates.end());
}

Conversion run(const CommandLine& line, StoreManager& store, double amount) {
  Conversion result{amount, currencyFromText(line.operands[1]), line.invert, "store", {}, {}, {}};
  Wanted wanted = wantedBy(line, store, result.source);
  seedBundledRates(store);
  if (hasBundledRates(store)) result.origin = "bundled";
  auto selected = wanted.currencies;
  selected.push_back(result.source);
  rateManager().loadStoredRates(std::move(selected));
  // The store keeps the amount only when there is an answer.
  keepConvertible(wanted, result);
  const auto converted =
      rateManager().convertAmount(amount, result.source, !line.noSave, line.invert).first;
  for (const CurrencyRef& destination : wanted.currencies) {
    result.items.push_back(*converted.itemForDstCurrency(destination));
  }
  return result;
}

void printJson(const Conversion& conversion, bool names) {
  JsonText json;
  json.beginObject().key("amount").number(conversion.amount);
  json.key("source").string(conversion.source->code());
  json.key("invert").boolean(conversion.invert);
  addRatesDate(json, ratesDate());
  json.key("origin").string(conversion.origin);
  addFreshness(json);
  json.key("items").beginArray();
  for (const ConvertedItem& item : conversion.items) {
    json.beginObject().key("currency").string(item.dstCurrency->code());
    json.key("rate").number(item.rate.doubleValue());
    json.key("amount").number(item.dstAmount.doubleValue());
    if (names) json.key("name").string(nameOf(*item.dstCurrency));
    json.endObject();
  }
  json.endArray().key("missing").beginArray();
  for (const std::string& code : conversion.missing) json.string(code);
  printLine(json.endArray().endObject().text());
}

void printTable(const Conversion& conversion, const StoreManager& store, bool names) {
  const NumberFormat format(store.fraction(), store.seporate());
  NumberColumn amounts;
  NumberColumn rates;
  for (const ConvertedItem& item : conversion.items) {
    amounts.add(format.amount(item.dstAmount.doubleValue()));
    rates.add(format.rate(item.rate.doubleValue()));
  }
  const std::string& source = conversion.source->code();
  printLine(format.exact(conversion.amount) + (conversion.invert ? " of each, in " : " ") +
            codeAndName(*conversion.source, names) + (conversion.invert ? ":" : " ="));
  for (std::size_t i = 0; i < conversion.items.size(); ++i) {
    const Currency& currency = *conversion.items[i].dstCurrency;
    const std::string& code = currency.code();
    std::string row = "  ";
    row.append(amounts.aligned(i)).append(" ");
    if (conversion.invert) row.append(source).append(" for ");
    row.append(code).append("   (1 ").append(source).append(" = ");
    row.append(rates.aligned(i)).append(" ").append(code).append(")");
    // At the end, since names are of any width and may run from right to left.
    if (names) row.append("   ").append(nameOf(currency));
    printLine(row);
  }
  printLine(shownRatesLine());
}

}  // namespace

Exit convert(const CommandLine& line) {
  if (line.operands.empty()) {
    throw usageFailure("expected an amount and a currency, as in: fexora 100 USD EUR");
  }
  const double amount = amountFromText(line.operands[0]);
  if (line.operands.size() < 2) {
    throw usageFailure("expected a currency after the amount, as in: fexora 100 USD EUR");
  }
  StoreManager& store = openStore(!line.noSave);
  const Conversion conversion = run(line, store, amount);
  if (line.json) {
    printJson(conversion, asksForNames(line));
  } else {
    printTable(conversion, store, showsNames(line));
  }
  if (!conversion.missing.empty()) printMessage(conversion.problem);
  if (!line.noSave) requireSaved(store);
  return conversion.missing.empty() ? Exit::done : Exit::noCurrency;
}

}  // namespace fexora::program
