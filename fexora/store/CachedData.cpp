// The store's cached currencies, rates and source amount.
#include <utility>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/platform/mapping/Mapper.h"
#include "fexora/platform/text/OneLine.h"
#include "fexora/store/StoreManager.h"

namespace fexora {

void StoreManager::saveUSDRates(const std::vector<USDRateRef>& rates, bool sync) {
  // Taken first: it is said of these rates alone, also where they find no memory.
  const auto said = std::exchange(announced_, std::nullopt);
  attempt("Keeping the rates", [&] {
    Dictionary content = ud();
    content.set(kUDUSDRates, Mapper<USDRate>::toRootArray(rates));
    const Date now(platform().loop->wallSeconds());
    content.set(kUDUSDRatesUpdated, now);
    if (said) {
      content.set(kUDRatesAnswer, said->answer.keptWith(now));
      keepTables(content, said->beside);
    } else {
      content.remove(kUDRatesAnswer);
    }
    setUd(std::move(content));
    if (sync) synchronize();
  });
}

std::optional<RatesAnswer> StoreManager::ratesAnswer() const {
  std::optional<RatesAnswer> answer;
  attempt("Reading what was said of the kept rates", [&] { answer = RatesAnswer::from(ud()); });
  return answer;
}

std::optional<std::vector<USDRateRef>> StoreManager::loadUSDRates() const {
  std::optional<std::vector<USDRateRef>> rates;
  attempt("Reading the kept rates", [&] {
    if (const Value* stored = ud().find(kUDUSDRates)) rates = Mapper<USDRate>::mapArray(*stored);
  });
  return rates;
}

std::optional<std::vector<USDRateRef>> StoreManager::loadUSDRates(const IsWanted& isWanted) const {
  std::optional<std::vector<USDRateRef>> rates;
  attempt("Reading some of the kept rates", [&] {
    const Value* stored = ud().find(kUDUSDRates);
    if (stored == nullptr) return;
    Mapper<USDRate>::List list;
    const auto add = list.visitor();
    std::string code;
    const bool isList = visitDictionaries(*stored, [&](const MapSource& rate, std::size_t left) {
      code.clear();
      rate.readText("code", code);
      makeOneLine(code, limits::kCodeCharacters);
      if (isWanted(code)) add(rate, left);
    });
    if (isList) rates = std::move(list).take();
  });
  return rates;
}

std::string StoreManager::ratesFrom() const {
  std::string word;
  attempt("Reading where rates come from", [&] {
    const Value* stored = ud().find(kUDRatesFrom);
    if (stored != nullptr && stored->string() != nullptr) word = *stored->string();
  });
  return word;
}

bool StoreManager::todayTrend() const {
  bool isDrawn = false;
  attempt("Reading whether the widget draws how rates moved", [&] {
    const Value* stored = ud().find(kUDTodayTrend);
    const NSNumber* number = stored != nullptr ? stored->number() : nullptr;
    isDrawn = number != nullptr && number->kind() == NSNumber::Kind::boolean && number->boolValue();
  });
  return isDrawn;
}

void StoreManager::setTodayTrend(bool isDrawn) {
  attempt("Keeping whether the widget draws how rates moved", [&] {
    Dictionary content = ud();
    if (isDrawn) {
      content.set(kUDTodayTrend, true);
    } else {
      content.remove(kUDTodayTrend);
    }
    setUd(std::move(content));
    synchronize();
  });
}

void StoreManager::setRatesFrom(std::string_view word) {
  attempt("Keeping where rates come from", [&] {
    Dictionary content = ud();
    if (word.empty()) {
      content.remove(kUDRatesFrom);
    } else {
      content.set(kUDRatesFrom, std::string(word));
    }
    setUd(std::move(content));
    synchronize();
  });
}

void StoreManager::saveCurrencies(const std::vector<CurrencyRef>& currencies) {
  attempt("Keeping the selection", [&] {
    put(kUDCurrencies, Mapper<Currency>::toJSONArray(currencies));
    synchronize();
  });
}

std::vector<CurrencyRef> StoreManager::loadCurrencies() const {
  std::vector<CurrencyRef> currencies;
  attempt("Reading the kept selection", [&] {
    const Value* stored = ud().find(kUDCurrencies);
    if (auto kept = stored != nullptr ? Mapper<Currency>::mapArray(*stored) : std::nullopt) {
      currencies = *std::move(kept);
      return;
    }
    for (const char* code : {"USD", "EUR"}) {
      if (auto currency = catalogue().currencyForCode(code)) currencies.push_back(currency);
    }
  });
  return currencies;
}

StoreSourceRef StoreManager::saveSourceCurrency(const CurrencyRef& currency, NSNumber withAmount,
                                                bool sync) {
  StoreSourceRef source;
  attempt("Keeping the source amount", [&] {
    source = StoreSource::make(withAmount, currency);
    put(kUDSourceCurrency, Mapper<StoreSource>::toJSON(*source));
    if (sync) synchronize();
  });
  return source;
}

StoreSourceRef StoreManager::loadSourceCurrency() const {
  StoreSourceRef source;
  attempt("Reading the source amount", [&] {
    if (const Value* stored = ud().find(kUDSourceCurrency)) {
      source = Mapper<StoreSource>::map(*stored);
    }
  });
  return source;
}

}  // namespace fexora
