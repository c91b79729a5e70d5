// Shows the settings or sets one.
#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <sstream>

#include "fexora/platform/text/NumberText.h"

#include "programs/fexora/Commands.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Store.h"
#include "programs/shared/Currencies.h"
#include "programs/shared/Failure.h"
#include "programs/shared/Words.h"
#include "programs/sources/NamedSources.h"

namespace fexora::program {
namespace {

using Text = const std::string&;

[[noreturn]] void reject(Text name, Text value, Text expected) {
  throw Failure{Exit::usage, "value",
                "the setting " + name + " cannot be \"" + value + "\"; expected " + expected};
}

std::int64_t integerIn(Text name, Text value, std::int64_t least, std::int64_t most) {
  const auto number = parseInteger(value);
  if (number && *number >= least && *number <= most) return *number;
  reject(name, value,
         "a whole number from " + std::to_string(least) + " to " + std::to_string(most));
}

bool boolean(Text name, Text value) {
  if (value == "true" || value == "1") return true;
  if (value == "false" || value == "0") return false;
  reject(name, value, "true or false");
}

// Takes the raw value or the case's name.
template <class Enum>
Enum enumCase(Text name, Text value, const char* zero, const char* one) {
  if (value == "0" || value == zero) return static_cast<Enum>(0);
  if (value == "1" || value == one) return static_cast<Enum>(1);
  reject(name, value, std::string(zero) + " (0) or " + one + " (1)");
}

std::vector<CurrencyRef> currencyList(Text value) {
  std::vector<std::string> codes;
  std::istringstream in(value);
  for (std::string code; std::getline(in >> std::ws, code, ',');) {
    code.erase(code.find_last_not_of(" \t") + 1);
    codes.push_back(code);
  }
  return currenciesFromTexts(codes);
}

struct Setting {
  const char* name;
  const char* meaning;
  void (*write)(JsonText& json, const StoreManager& store);
  void (*set)(StoreManager& store, Text name, Text value);
};

template <class Enum>
std::int64_t raw(Enum value) {
  return static_cast<std::int64_t>(value);
}

// Those of the windows, and then what the JSON form of all leaves away.
constexpr std::size_t kGivenSettings = 8;
const std::array<Setting, kGivenSettings + 2> kSettings = {{
    {"fraction", "digits after the decimal mark",
     [](JsonText& json, const StoreManager& store) { json.integer(store.fraction()); },
     [](StoreManager& store, Text name, Text value) {
       if (value == "0") reject(name, value, "1 to 15; for whole units: fexora --rounded");
       store.setFraction(integerIn(name, value, 1, Settings::kMostFraction));
     }},
    {"mode", "light or dark windows",
     [](JsonText& json, const StoreManager& store) { json.integer(raw(store.mode())); },
     [](StoreManager& store, Text name, Text value) {
       store.setMode(enumCase<StyleMode>(name, value, "light", "dark"));
     }},
    {"seporate", "signs between groups of digits",
     [](JsonText& json, const StoreManager& store) { json.boolean(store.seporate()); },
     [](StoreManager& store, Text name, Text value) { store.setSeporate(boolean(name, value)); }},
    {"namingInWidget", "currencies of the widget by name or by code",
     [](JsonText& json, const StoreManager& store) { json.integer(raw(store.namingInWidget())); },
     [](StoreManager& store, Text name, Text value) {
       store.setNamingInWidget(enumCase<Naming>(name, value, "names", "codes"));
     }},
    {"numberOfCurrenciesInWidget", "how many currencies the widget shows at most",
     [](JsonText& json, const StoreManager& store) {
       json.integer(store.numberOfCurrenciesInWidget());
     },
     [](StoreManager& store, Text name, Text value) {
       store.setNumberOfCurrenciesInWidget(
           integerIn(name, value, 1, Settings::kMostNumberOfCurrencies));
     }},
    {"todayCurrencies", "currencies of the widget; empty: the selection",
     [](JsonText& json, const StoreManager& store) {
       json.beginArray();
       for (const std::string& code : codesOf(store.todayCurrencies())) json.string(code);
       json.endArray();
     },
     [](StoreManager& store, Text /*name*/, Text value) {
       store.setTodayCurrencies(currencyList(value));
     }},
    {"todayConversionMode",
     "the widget shows the last amount in each currency, or one unit of todayRelativeCurrency",
     [](JsonText& json, const StoreManager& store) {
       json.integer(raw(store.todayConversionMode()));
     },
     [](StoreManager& store, Text name, Text value) {
       store.setTodayConversionMode(enumCase<TodayConversionMode>(name, value, "linear", "rate"));
     }},
    {"todayRelativeCurrency", "the currency whose rates the widget shows",
     [](JsonText& json, const StoreManager& store) {
       json.string(store.todayRelativeCurrency()->code());
     },
     [](StoreManager& store, Text /*name*/, Text value) {
       store.setTodayRelativeCurrency(currencyFromText(value));
     }},
    {"ratesFrom",
     "where fresh rates come from; automatic: a service that is configured, else exchange-api, "
     "then ecb",
     [](JsonText& json, const StoreManager& store) {
       const std::string from = store.ratesFrom();
       json.string(from.empty() ? sources::kAutomatic : std::string_view(from));
     },
     [](StoreManager& store, Text name, Text value) {
       const auto choices = sources::settingChoices();
       if (std::find(choices.begin(), choices.end(), value) == choices.end()) {
         reject(name, value, "one of " + listed(choices));
       }
       store.setRatesFrom(value == sources::kAutomatic ? std::string() : value);
     }},
    {"todayTrend", "whether the widget draws how each rate moved in 30 days",
     [](JsonText& json, const StoreManager& store) { json.boolean(store.todayTrend()); },
     [](StoreManager& store, Text name, Text value) { store.setTodayTrend(boolean(name, value)); }},
}};

const Setting& settingNamed(Text typed) {
  // As it is written in English.
  const std::string name = typed == "separate" ? "seporate" : typed;
  for (const Setting& setting : kSettings) {
    if (name == setting.name) return setting;
  }
  const std::string offer = offerOf(typed, settingNames());
  throw usageFailure("there is no setting \"" + typed + "\"" +
                     (offer.empty() ? "; expected one of " + listed(settingNames()) : offer));
}

// The name of the case of one of the three enums; empty for other settings.
std::string caseName(std::string_view setting, const StoreManager& store) {
  if (setting == "mode") return store.mode() == StyleMode::dark ? "dark" : "light";
  if (setting == "namingInWidget")
    return store.namingInWidget() == Naming::codes ? "codes" : "names";
  if (setting != "todayConversionMode") return {};
  return store.todayConversionMode() == TodayConversionMode::rate ? "rate" : "linear";
}

// One setting for people: codes separated by commas, the raw value of an enum with its name,
// everything else as in JSON but unquoted.
std::string shown(const Setting& setting, const StoreManager& store) {
  JsonText json;
  setting.write(json, store);
  std::string text;
  for (const char c : json.text()) {
    if (c != '"' && c != '[' && c != ']') text += c;
  }
  const std::string name = caseName(setting.name, store);
  return name.empty() ? text : text + " (" + name + ")";
}

void addGivenSettings(JsonText& json, const StoreManager& store) {
  for (std::size_t i = 0; i < kGivenSettings; ++i) {
    kSettings[i].write(json.key(kSettings[i].name), store);
  }
}

void print(const CommandLine& line, const StoreManager& store) {
  if (line.json) {
    JsonText json;
    json.beginObject();
    addGivenSettings(json, store);
    const Setting* named = line.operands.empty() ? nullptr : &settingNamed(line.operands[0]);
    const bool isFurther = named != nullptr && named >= &kSettings[kGivenSettings];
    if (isFurther) named->write(json.key(named->name), store);
    printLine(json.endObject().text());
  } else if (!line.operands.empty()) {
    printLine(shown(settingNamed(line.operands[0]), store));
  } else {
    for (const Setting& setting : kSettings) {
      printLine(std::string(setting.name) + " = " + shown(setting, store));
      printLine(std::string("    ") + setting.meaning);
    }
  }
}

}  // namespace

std::vector<std::string> settingNames() {
  std::vector<std::string> names;
  names.reserve(std::size(kSettings));
  for (const Setting& setting : kSettings) names.emplace_back(setting.name);
  return names;
}

std::string settingText(const std::string& name, const StoreManager& store) {
  return shown(settingNamed(name), store);
}

void addSettings(JsonText& json, const StoreManager& store) {
  json.beginObject();
  addGivenSettings(json, store);
  json.endObject();
}

void settings(const CommandLine& line) {
  if (line.operands.size() > 2) throw usageFailure("settings takes a name and a value at most");
  // A wrong name is found before the store is opened.
  const Setting& setting =
      line.operands.empty() ? kSettings.front() : settingNamed(line.operands[0]);
  StoreManager& store = openStoreInFolder();
  if (line.operands.size() == 2) setting.set(store, setting.name, line.operands[1]);
  print(line, store);
  requireSaved(store);
}

}  // namespace fexora::program
