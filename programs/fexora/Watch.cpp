// Shows each change that another process makes to the store.
#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "programs/fexora/Commands.h"
#include "programs/fexora/KeepFresh.h"
#include "programs/fexora/Names.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Store.h"
#include "programs/shared/Currencies.h"
#include "programs/shared/Failure.h"
#include "programs/shared/ShownNames.h"

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

// What a person or a program may ask about, by name, as people see it; empty where there is none.
std::map<std::string, std::string> contentOf(const StoreManager& store) {
  std::map<std::string, std::string> content;
  for (const std::string& name : settingNames()) content[name] = settingText(name, store);
  content["currencies"] = listed(codesOf(store.loadCurrencies()));
  std::string& amount = content["source"];
  const auto source = store.loadSourceCurrency();
  if (source != nullptr && source->currency() != nullptr) {
    amount = source->amount().stringValue() + " " + source->currency()->code();
  }
  content["updated"] = ratesDate().updated.value_or("");
  return content;
}

struct Change {
  std::string name;
  std::string before;
  std::string now;
};

// Both have the same names.
std::vector<Change> changesBetween(const std::map<std::string, std::string>& before,
                                   const std::map<std::string, std::string>& now) {
  std::vector<Change> changes;
  for (const auto& [name, value] : now) {
    const std::string& old = before.at(name);
    if (old != value) changes.push_back({name, old, value});
  }
  return changes;
}

std::string jsonUpdate(const StoreManager& store, const std::vector<Change>& changes) {
  JsonText json;
  json.beginObject().key("notification").string(fileWatcherUpdate);
  addSettings(json.key("settings"), store);
  json.key("currencies").beginArray();
  for (const std::string& code : codesOf(store.loadCurrencies())) json.string(code);
  json.endArray();
  addSource(json, store.loadSourceCurrency());
  json.key("updated").stringOrNull(ratesDate().updated).key("changed").beginArray();
  for (const Change& change : changes) json.string(change.name);
  return json.endArray().endObject().text();
}

// "fraction 3 -> 2"
std::string changeText(const Change& change) {
  const auto shown = [](const std::string& value) { return value.empty() ? "nothing" : value; };
  return change.name + " " + shown(change.before) + " -> " + shown(change.now);
}

std::string plainUpdate(const StoreManager& store, const std::vector<Change>& changes, bool names) {
  std::string text = "store changed: ";
  for (const Change& change : changes) text += changeText(change) + ", ";
  text += "selection";
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
  auto content = contentOf(store);
  const auto token = NotificationCenter::defaultCenter().addObserver(fileWatcherUpdate, [&] {
    try {
      auto now = contentOf(store);
      const auto changes = changesBetween(std::exchange(content, now), now);
      printLine(line.json ? jsonUpdate(store, changes)
                          : plainUpdate(store, changes, showsNames(line)));
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
