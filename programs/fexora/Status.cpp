// Shows where the store lies, what it holds and how old it is.
#include "programs/fexora/Commands.h"
#include "programs/fexora/Failure.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Store.h"

namespace fexora::program {
namespace {

std::optional<std::string> orNothing(const std::string& text) {
  return text.empty() ? std::nullopt : std::optional(text);
}

}  // namespace

void status(const CommandLine& line) {
  if (!line.operands.empty()) throw usageFailure("status takes options only");
  StoreManager& store = openStore();
  const auto rates = store.loadUSDRates();
  const auto count = static_cast<std::int64_t>(rates ? rates->size() : 0);
  const auto catalogue = static_cast<std::int64_t>(currencyManager().currencies().size());
  const auto selected = static_cast<std::int64_t>(store.loadCurrencies().size());
  const auto container = orNothing(store.applicationDocumentsDirectory());
  const auto file = orNothing(store.fileURL());
  if (line.json) {
    JsonText json;
    json.beginObject().key("container").stringOrNull(container).key("file").stringOrNull(file);
    json.key("catalogue").integer(catalogue).key("rates").integer(count);
    json.key("currencies").integer(selected);
    addRatesDate(json, ratesDate());
    printLine(json.key("url").string(kTrelbyRatesURL).endObject().text());
  } else {
    printLine("container   " + container.value_or("none"));
    printLine("store file  " + file.value_or("none"));
    printLine("catalogue   " + std::to_string(catalogue) + " currencies");
    printLine("selection   " + std::to_string(selected) + " currencies");
    printLine("rates       " + std::to_string(count) +
              (count > 0 ? ", " + ratesLine(ratesDate()) : ""));
    printLine("service     " + kTrelbyRatesURL);
  }
  requireSaved(store);
}

}  // namespace fexora::program
