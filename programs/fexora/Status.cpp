// Shows where the store lies, what it holds and how old it is.
#include "fexora/platform/network/ShownAddress.h"

#include "programs/fexora/Commands.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Store.h"
#include "programs/shared/Failure.h"

namespace fexora::program {

void status(const CommandLine& line) {
  if (!line.operands.empty()) throw usageFailure("status takes options only");
  StoreManager& store = openStoreInFolder();
  const auto rates = store.loadUSDRates();
  const auto count = static_cast<std::int64_t>(rates ? rates->size() : 0);
  const auto catalogue = static_cast<std::int64_t>(currencyManager().currencies().size());
  const auto selected = static_cast<std::int64_t>(store.loadCurrencies().size());
  const std::string& container = store.applicationDocumentsDirectory();
  const std::string& file = store.fileURL();
  if (line.json) {
    JsonText json;
    json.beginObject().key("container").string(container).key("file").string(file);
    json.key("catalogue").integer(catalogue).key("rates").integer(count);
    json.key("currencies").integer(selected);
    addRatesDate(json, ratesDate());
    printLine(json.key("url").string(shownAddress(kTrelbyRatesURL)).endObject().text());
  } else {
    printLine("container   " + container);
    printLine("store file  " + file);
    printLine("catalogue   " + std::to_string(catalogue) + " currencies");
    printLine("selection   " + std::to_string(selected) + " currencies");
    printLine("rates       " + (count > 0 ? std::to_string(count) + ", " + ratesLine()
                                          : std::string("none yet: the bundled ones are used")));
    printLine("service     " + shownAddress(kTrelbyRatesURL));
  }
  requireSaved(store);
}

}  // namespace fexora::program
