// Shows or replaces the stored selection.
#include "programs/fexora/Commands.h"
#include "programs/fexora/Names.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Store.h"
#include "programs/shared/Currencies.h"
#include "programs/shared/ShownNames.h"

namespace fexora::program {

void select(const CommandLine& line) {
  const auto chosen = currenciesFromTexts(line.operands);
  StoreManager& store = openStoreInFolder();
  if (!chosen.empty()) store.saveCurrencies(chosen);
  const auto selected = store.loadCurrencies();
  if (line.json) {
    JsonText json;
    json.beginObject().key("currencies").beginArray();
    for (const std::string& code : codesOf(selected)) json.string(code);
    printLine(json.endArray().endObject().text());
  } else {
    const bool names = showsNames(line);
    for (const CurrencyRef& currency : selected) printLine(codeAndName(*currency, names));
  }
  requireSaved(store);
}

}  // namespace fexora::program
