// Shows where the store lies, what it holds and how old it is.
#include "fexora/platform/network/ShownAddress.h"

#include "programs/fexora/Commands.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Refresh.h"
#include "programs/fexora/Store.h"
#include "programs/shared/Failure.h"
#include "programs/sources/NamedSources.h"

namespace fexora::program {
namespace {

std::vector<sources::SourceStep> stepsOf(const StoreManager& store) {
  return sources::stepsFor(store.ratesFrom(), kTrelbyRatesURL);
}

// The first that is asked; the service's where nobody is.
std::string addressAsked(const StoreManager& store) {
  const auto steps = stepsOf(store);
  const bool isThere = !steps.empty() && !steps.front().addresses.empty();
  return isThere ? steps.front().addresses.front() : kTrelbyRatesURL;
}

// "exchange-api, then ecb"
std::string askedText(const StoreManager& store) {
  std::string text;
  for (const sources::SourceStep& step : stepsOf(store)) {
    text += (text.empty() ? "" : ", then ") + step.name;
    if (step.isService) text += ", " + shownAddress(step.addresses.front());
  }
  return text.empty() ? "nowhere, as the setting ratesFrom says" : text;
}

}  // namespace

void status(const CommandLine& line) {
  if (!line.operands.empty()) throw usageFailure("status takes options only");
  StoreManager& store = openStoreInFolder();
  const auto count = static_cast<std::int64_t>(countOfRates(store));
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
    printLine(json.key("url").string(shownAddress(addressAsked(store))).endObject().text());
  } else {
    printLine("container   " + container);
    printLine("store file  " + file);
    printLine("catalogue   " + std::to_string(catalogue) + " currencies");
    printLine("selection   " + std::to_string(selected) + " currencies");
    printLine("rates       " + (count > 0 ? std::to_string(count) + ", " + ratesLine()
                                          : std::string("none yet: the bundled ones are used")));
    printLine("rates from  " + askedText(store));
  }
  requireSaved(store);
}

}  // namespace fexora::program
