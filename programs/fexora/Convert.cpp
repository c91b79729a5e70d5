// The main job: one amount into the currencies that were asked for, from what is at hand.
#include <algorithm>
#include <cmath>

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

struct Conversion {
  double amount;
  CurrencyRef source;
  bool invert;
  const char* origin;
  std::vector<ConvertedItem> items;
};

Failure noRate(const CurrencyRef& source, const CurrencyRef& destination) {
  const std::string pair = "from " + source->code() + " to " + destination->code();
  return {
      Exit::noCurrency, "rate",
      "there is no rate " + pair + (*source == *destination ? ": they are the same currency" : "")};
}

std::vector<CurrencyRef> destinations(const CommandLine& line, const StoreManager& store,
                                      const CurrencyRef& source) {
  if (line.operands.size() > 2) {
    return currenciesFromTexts({line.operands.begin() + 2, line.operands.end()});
  }
  // Of the stored selection, what is not the source itself.
  auto typed = codesOf(store.loadCurrencies());
  std::erase(typed, source->code());
  if (typed.empty()) {
    throw Failure{Exit::noCurrency, "currency",
                  "the stored selection has no currency but " + source->code() +
                      "; name one, as in: fexora 100 USD EUR"};
  }
  return currenciesFromTexts(typed);
}

// Brings the store's rates into the rate manager. With a request counted as just sent, loading ends
// after the store.
void loadStoredRates(std::vector<CurrencyRef> selection) {
  rateManager().setLastUpdate(Date(Platform::process().loop->wallSeconds()));
  rateManager().loadRates(std::move(selection), false, false, {});
}

Conversion run(const CommandLine& line, StoreManager& store, double amount) {
  const CurrencyRef source = currencyFromText(line.operands[1]);
  const auto wanted = destinations(line, store, source);
  const bool bundled = seedBundledRates(store);
  auto selection = wanted;
  selection.push_back(source);
  loadStoredRates(std::move(selection));
  // The store keeps the amount only when every line of the answer is there.
  for (const CurrencyRef& destination : wanted) {
    if (!rateManager().rateForSourceCurrency(source, destination))
      throw noRate(source, destination);
  }
  const auto converted =
      rateManager().convertAmount(amount, source, !line.noSave, line.invert).first;
  Conversion result{amount, source, line.invert, bundled ? "bundled" : "store", {}};
  for (const CurrencyRef& destination : wanted) {
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
  json.key("origin").string(conversion.origin).key("items").beginArray();
  for (const ConvertedItem& item : conversion.items) {
    json.beginObject().key("currency").string(item.dstCurrency->code());
    json.key("rate").number(item.rate.doubleValue());
    json.key("amount").number(item.dstAmount.doubleValue());
    if (names) json.key("name").string(nameOf(*item.dstCurrency));
    json.endObject();
  }
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
  printLine(ratesLine(ratesDate()));
}

}  // namespace

void convert(const CommandLine& line) {
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
  if (!line.noSave) requireSaved(store);
}

}  // namespace fexora::program
