// The store's cached currencies, rates and source amount.
#include <utility>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/platform/mapping/Mapper.h"
#include "fexora/store/StoreManager.h"

namespace fexora {

void StoreManager::saveUSDRates(const std::vector<USDRateRef>& rates, bool sync) {
  put(kUDUSDRates, Mapper<USDRate>::toJSONArray(rates));
  put(kUDUSDRatesUpdated, Date(platform().loop->wallSeconds()));
  if (sync) synchronize();
}

std::optional<std::vector<USDRateRef>> StoreManager::loadUSDRates() const {
  const Value* stored = ud().find(kUDUSDRates);
  return stored != nullptr ? Mapper<USDRate>::mapArray(*stored) : std::nullopt;
}

void StoreManager::saveCurrencies(const std::vector<CurrencyRef>& currencies) {
  put(kUDCurrencies, Mapper<Currency>::toJSONArray(currencies));
  synchronize();
}

std::vector<CurrencyRef> StoreManager::loadCurrencies() const {
  if (const Value* stored = ud().find(kUDCurrencies)) {
    if (auto currencies = Mapper<Currency>::mapArray(*stored)) return *std::move(currencies);
  }
  std::vector<CurrencyRef> currencies;
  for (const char* code : {"USD", "EUR"}) {
    if (auto currency = catalogue().currencyForCode(code)) currencies.push_back(currency);
  }
  return currencies;
}

StoreSourceRef StoreManager::saveSourceCurrency(const CurrencyRef& currency, NSNumber withAmount,
                                                bool sync) {
  auto source = StoreSource::make(withAmount, currency);
  put(kUDSourceCurrency, Mapper<StoreSource>::toJSON(*source));
  if (sync) synchronize();
  return source;
}

StoreSourceRef StoreManager::loadSourceCurrency() const {
  const Value* stored = ud().find(kUDSourceCurrency);
  return stored != nullptr ? Mapper<StoreSource>::map(*stored) : nullptr;
}

}  // namespace fexora
