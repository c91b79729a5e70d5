// Shows each change that another process makes to the store.
#include <cstdint>
#include <optional>

#include "programs/fexora/Commands.h"
#include "programs/fexora/Currencies.h"
#include "programs/fexora/Failure.h"
#include "programs/fexora/KeepFresh.h"
#include "programs/fexora/Names.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Store.h"

namespace fexora::program {
namespace {

void printWatching(const CommandLine& line, const std::string& folder) {
  if (!line.json) return printLine("watching " + folder);
  JsonText json;
  printLine(json.beginObject().key("watching").string(folder).endObject().text());
}

void addSource(JsonText& json, const StoreSourceRef& source) {
  json.key("source");
  if (source == nullptr || source->currency() == nullptr) {
    json.null();
    return;
  }
  json.beginObject().key("amount").number(source->amount().doubleValue());
  json.key("currency").string(source->currency()->code()).endObject();
}

std::string jsonUpdate(const StoreManager& store) {
  JsonText json;
  json.beginObject().key("notification").string(fileWatcherUpdate);
  addSettings(json.key("settings"), store);
  json.key("currencies").beginArray();
  for (const std::string& code : codesOf(store.loadCurrencies())) json.string(code);
  json.endArray();
  addSource(json, store.loadSourceCurrency());
  json.key("updated").stringOrNull(ratesDate().updated);
  return json.endObject().text();
}

std::string plainUpdate(const StoreManager& store, bool names) {
  std::string text = std::string(fileWatcherUpdate) + ": selection";
  for (const CurrencyRef& currency : store.loadCurrencies()) {
    text.append(" ").append(codeAndName(*currency, names));
  }
  const auto source = store.loadSourceCurrency();
  if (source != nullptr && source->currency() != nullptr) {
    text += ", last amount " + source->amount().stringValue() + " " + source->currency()->code();
  }
  return text + ", " + ratesLine();
}

}  // namespace

void watch(const CommandLine& line) {
  if (!line.operands.empty()) throw usageFailure("watch takes options only");
  StoreManager& store = openStoreInFolder();
  if (store.folderMonitor() == nullptr) {
    throw Failure{Exit::notWritten, "store",
                  "the container folder cannot be watched; see --verbose"};
  }
  std::int64_t seen = 0;
  std::optional<Failure> failure;
  const auto token = NotificationCenter::defaultCenter().addObserver(fileWatcherUpdate, [&] {
    try {
      printLine(line.json ? jsonUpdate(store) : plainUpdate(store, showsNames(line)));
    } catch (const Failure& problem) {
      failure = problem;
    }
    ++seen;
  });
  printWatching(line, store.applicationDocumentsDirectory());
  std::optional<KeepFresh> fresh;
  if (line.refresh) fresh.emplace(store, *line.refresh);
  Platform::process().loop->runUntil(
      [&] { return failure.has_value() || (line.count && seen >= *line.count); });
  if (failure) throw Failure(*failure);
}

}  // namespace fexora::program
