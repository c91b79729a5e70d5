#include "fexora/store/StoreManager.h"

#include <new>
#include <utility>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/mapping/Mapper.h"

namespace fexora {
namespace {

constexpr const char* kDefaultRelative = "USD";

// For want of memory, one that lives for ever: the store is never without.
CurrencyRef defaultRelativeCurrency() {
  try {
    return Currency::make(kDefaultRelative);
  } catch (const std::bad_alloc&) {
    static NoDestructor<Currency> shared(kDefaultRelative);
    return {std::shared_ptr<void>(), &*shared};
  }
}

}  // namespace

StoreManager::StoreManager() : StoreManager(Platform::process()) {}

StoreManager::StoreManager(Platform& platform, CurrencyManager* catalogue)
    : UserStoreManager(platform),
      catalogue_(catalogue),
      todayRelativeCurrency_(defaultRelativeCurrency()) {
  start();
}

CurrencyManager& StoreManager::catalogue() const {
  return catalogue_ != nullptr ? *catalogue_ : currencyManager();
}

void StoreManager::loadData() {
  Loaded before = loadedSoFar();
  UserStoreManager::loadData();
  if (!attempt("Loading the settings", [this] { loadSettings(); })) takeBack(std::move(before));
}

const char* StoreManager::rawValue(Key key) {
  switch (key) {
    case Key::Fraction:
      return "Fraction";
    case Key::Mode:
      return "Mode";
    case Key::Seporate:
      return "Seporate";
    case Key::NamingInWidget:
      return "NamingInWidget";
    case Key::NumberOfCurrenciesInWidget:
      return "NumberOfCurrenciesInWidget";
    case Key::TodayCurrencies:
      return "TodayCurrencies";
    case Key::TodayConversionMode:
      return "TodayConversionMode";
    case Key::TodayRelativeCurrency:
      return "TodayRelativeCurrency";
  }
  return "";
}

void StoreManager::put(std::string_view key, Value value) {
  Dictionary content = ud();
  content.set(key, std::move(value));
  setUd(std::move(content));
}

Dictionary StoreManager::withSettings(Dictionary content) const {
  const auto put = [&content](Key key, Value value) {
    content.set(rawValue(key), std::move(value));
  };
  put(Key::Mode, static_cast<std::int64_t>(mode_));
  put(Key::Fraction, fraction_);
  put(Key::Seporate, seporate_);
  put(Key::NamingInWidget, static_cast<std::int64_t>(namingInWidget_));
  put(Key::NumberOfCurrenciesInWidget, numberOfCurrenciesInWidget_);
  put(Key::TodayCurrencies, Mapper<Currency>::toJSONArray(todayCurrencies_));
  put(Key::TodayConversionMode, static_cast<std::int64_t>(todayConversionMode_));
  put(Key::TodayRelativeCurrency, Mapper<Currency>::toJSON(*todayRelativeCurrency_));
  return content;
}

Dictionary StoreManager::defaultContent() const {
  return {
      {rawValue(Key::Mode), static_cast<std::int64_t>(StyleMode::light)},
      {rawValue(Key::Fraction), kDefaultFraction},
      {rawValue(Key::Seporate), true},
      {rawValue(Key::NamingInWidget), static_cast<std::int64_t>(Naming::names)},
      {rawValue(Key::NumberOfCurrenciesInWidget), kDefaultNumberOfCurrencies},
      {rawValue(Key::TodayCurrencies), Array()},
      {rawValue(Key::TodayConversionMode), static_cast<std::int64_t>(TodayConversionMode::linear)},
      {rawValue(Key::TodayRelativeCurrency), Mapper<Currency>::toJSON(*defaultRelativeCurrency())}};
}

void StoreManager::saveSettings() {
  if (!canSave_) {
    canSave_ = true;
    return;
  }
  if (attempt("Saving the settings", [this] { setUd(withSettings(ud())); })) synchronize();
}

const Value* StoreManager::storedValue(Key key) const {
  return ud().find(rawValue(key));
}

std::optional<std::int64_t> StoreManager::storedInteger(Key key) const {
  const Value* value = storedValue(key);
  const NSNumber* number = value != nullptr ? value->number() : nullptr;
  if (number == nullptr || number->kind() != NSNumber::Kind::integer) return std::nullopt;
  return number->intValue();
}

// Each of the three enums has the raw values 0, the default, and 1.
template <class Enum>
Enum StoreManager::storedCase(Key key) const {
  return static_cast<Enum>(storedInteger(key) == 1 ? 1 : 0);
}

std::int64_t StoreManager::storedCount(Key key, std::int64_t fallback) const {
  const std::int64_t count = storedInteger(key).value_or(0);
  return count != 0 ? count : fallback;
}

void StoreManager::loadSettings() {
  // What needs memory comes first: then all eight are taken, or none.
  const Value* today = storedValue(Key::TodayCurrencies);
  auto currencies = today != nullptr ? Mapper<Currency>::mapArray(*today) : std::nullopt;
  const Value* stored = storedValue(Key::TodayRelativeCurrency);
  auto relative = stored != nullptr ? Mapper<Currency>::map(*stored) : nullptr;
  // Each setter saves, and the switch turns that one save into nothing.
  canSave_ = false;
  setMode(storedCase<StyleMode>(Key::Mode));
  canSave_ = false;
  setFraction(storedCount(Key::Fraction, kDefaultFraction));
  canSave_ = false;
  const Value* seporate = storedValue(Key::Seporate);
  const NSNumber* flag = seporate != nullptr ? seporate->number() : nullptr;
  setSeporate(flag == nullptr || flag->kind() != NSNumber::Kind::boolean || flag->boolValue());
  canSave_ = false;
  setNamingInWidget(storedCase<Naming>(Key::NamingInWidget));
  canSave_ = false;
  setNumberOfCurrenciesInWidget(
      storedCount(Key::NumberOfCurrenciesInWidget, kDefaultNumberOfCurrencies));
  canSave_ = false;
  setTodayCurrencies(std::move(currencies).value_or(std::vector<CurrencyRef>()));
  canSave_ = false;
  setTodayConversionMode(storedCase<TodayConversionMode>(Key::TodayConversionMode));
  canSave_ = false;
  setTodayRelativeCurrency(std::move(relative));
}

template <class Field>
void StoreManager::change(Field& field, Field value) {
  field = std::move(value);
  saveSettings();
}

void StoreManager::setFraction(std::int64_t fraction) {
  change(fraction_, fraction);
}
void StoreManager::setMode(StyleMode mode) {
  change(mode_, mode);
}
void StoreManager::setSeporate(bool seporate) {
  change(seporate_, seporate);
}
void StoreManager::setNamingInWidget(Naming naming) {
  change(namingInWidget_, naming);
}
void StoreManager::setNumberOfCurrenciesInWidget(std::int64_t number) {
  change(numberOfCurrenciesInWidget_, number);
}
void StoreManager::setTodayCurrencies(std::vector<CurrencyRef> currencies) {
  std::erase(currencies, nullptr);
  change(todayCurrencies_, std::move(currencies));
}
void StoreManager::setTodayConversionMode(TodayConversionMode mode) {
  change(todayConversionMode_, mode);
}
void StoreManager::setTodayRelativeCurrency(CurrencyRef currency) {
  change(todayRelativeCurrency_,
         currency != nullptr ? std::move(currency) : defaultRelativeCurrency());
}

StoreManager& storeManager() {
  static NoDestructor<StoreManager> manager;
  return *manager;
}

}  // namespace fexora
