#include "fexora/store/StoreManager.h"

#include <utility>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/platform/base/NoDestructor.h"

namespace fexora {

StoreManager::StoreManager() : StoreManager(Platform::process()) {}

StoreManager::StoreManager(Platform& platform, CurrencyManager* catalogue)
    : UserStoreManager(platform), catalogue_(catalogue) {
  start();
}

StoreManager::StoreManager(Platform& platform, CurrencyManager* catalogue, std::string folder)
    : UserStoreManager(platform, std::move(folder)), catalogue_(catalogue) {
  start();
}

CurrencyManager& StoreManager::catalogue() const {
  return catalogue_ != nullptr ? *catalogue_ : currencyManager();
}

void StoreManager::loadData() {
  loadInSteps([this] {
    load();
    loadSettings();
  });
}

void StoreManager::put(std::string_view key, Value value) {
  Dictionary content = ud();
  content.set(key, std::move(value));
  setUd(std::move(content));
}

void StoreManager::saveSettings() {
  if (!canSave_) {
    canSave_ = true;
    return;
  }
  attempt("Saving the settings", [this] {
    Dictionary content = ud();
    settings_.putInto(content);
    setUd(std::move(content));
    synchronize();
  });
}

void StoreManager::loadSettings() {
  // What needs memory comes first: then all eight are taken, or none.
  Settings loaded = Settings::from(ud());
  // Each setter saves, and the switch turns that one save into nothing.
  canSave_ = false;
  setMode(loaded.mode);
  canSave_ = false;
  setFraction(loaded.fraction);
  canSave_ = false;
  setSeporate(loaded.seporate);
  canSave_ = false;
  setNamingInWidget(loaded.namingInWidget);
  canSave_ = false;
  setNumberOfCurrenciesInWidget(loaded.numberOfCurrenciesInWidget);
  canSave_ = false;
  setTodayCurrencies(std::move(loaded.todayCurrencies));
  canSave_ = false;
  setTodayConversionMode(loaded.todayConversionMode);
  canSave_ = false;
  setTodayRelativeCurrency(std::move(loaded.todayRelativeCurrency));
}

template <class Field>
void StoreManager::change(Field& field, Field value) {
  field = std::move(value);
  saveSettings();
}

void StoreManager::setFraction(std::int64_t fraction) {
  change(settings_.fraction, fraction);
}
void StoreManager::setMode(StyleMode mode) {
  change(settings_.mode, mode);
}
void StoreManager::setSeporate(bool seporate) {
  change(settings_.seporate, seporate);
}
void StoreManager::setNamingInWidget(Naming naming) {
  change(settings_.namingInWidget, naming);
}
void StoreManager::setNumberOfCurrenciesInWidget(std::int64_t number) {
  change(settings_.numberOfCurrenciesInWidget, number);
}
void StoreManager::setTodayCurrencies(std::vector<CurrencyRef> currencies) {
  std::erase(currencies, nullptr);
  change(settings_.todayCurrencies, std::move(currencies));
}
void StoreManager::setTodayConversionMode(TodayConversionMode mode) {
  change(settings_.todayConversionMode, mode);
}
void StoreManager::setTodayRelativeCurrency(CurrencyRef currency) {
  change(settings_.todayRelativeCurrency,
         currency != nullptr ? std::move(currency) : Settings::defaultRelativeCurrency());
}

StoreManager& storeManager() {
  static NoDestructor<StoreManager> manager;
  return *manager;
}

}  // namespace fexora
