// Shows, replaces or changes the stored selection.
#include <algorithm>

#include "programs/fexora/Commands.h"
#include "programs/fexora/Names.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Store.h"
#include "programs/shared/Currencies.h"
#include "programs/shared/Failure.h"
#include "programs/shared/ShownNames.h"

namespace fexora::program {
namespace {

using Selection = std::vector<CurrencyRef>;

void add(const std::string& code, Selection& selected) {
  CurrencyRef currency = currencyFromText(code);
  const bool isThere = std::any_of(selected.begin(), selected.end(),
                                   [&](const CurrencyRef& one) { return *one == *currency; });
  if (!isThere) selected.push_back(std::move(currency));
}

// A stored code that is no currency can go, too.
void remove(const std::string& code, Selection& selected) {
  const CurrencyRef currency = findCurrency(code);
  const std::string wanted = currency != nullptr ? currency->code() : code;
  const auto count =
      std::erase_if(selected, [&](const CurrencyRef& one) { return one->code() == wanted; });
  if (count > 0) return;
  throw Failure{Exit::noCurrency, "currency",
                "the selection has no \"" + wanted + "\", but " + listed(codesOf(selected))};
}

void print(const CommandLine& line, const Selection& selected) {
  if (line.json) {
    JsonText json;
    json.beginObject().key("currencies").beginArray();
    for (const std::string& code : codesOf(selected)) json.string(code);
    return printLine(json.endArray().endObject().text());
  }
  const bool names = showsNames(line);
  for (const CurrencyRef& currency : selected) printLine(codeAndName(*currency, names));
}

}  // namespace

// Nothing is changed when one of the words is wrong.
void select(const CommandLine& line) {
  Selection selected = currenciesFromTexts(line.operands);
  StoreManager& store = openStoreInFolder();
  const bool replaces = !selected.empty();
  if (!replaces) selected = store.loadCurrencies();
  for (const auto& [adds, code] : line.changes) (adds ? add : remove)(code, selected);
  if (replaces || !line.changes.empty()) store.saveCurrencies(selected);
  print(line, store.loadCurrencies());
  requireSaved(store);
}

}  // namespace fexora::program
