#include "fexora/rates/BundledRates.h"

#include <algorithm>
#include <new>
#include <utility>

#include "fexora/resources/BundledRatesTable.h"

namespace fexora {
namespace {

// In the form in which the store keeps rates: see USDRate's JSON form.
Value bundledRates() {
  const auto table = bundledRatesTable();
  Array rates;
  rates.reserve(table.size());
  for (const BundledRate& rate : table) {
    rates.emplace_back(Dictionary{{"code", rate.code}, {"rate", rate.rate}});
  }
  return rates;
}

bool isBundled(const Value& stored, const BundledRate& bundled) {
  const Dictionary* rate = stored.dictionary();
  const Value* code = rate != nullptr ? rate->find("code") : nullptr;
  const Value* figure = rate != nullptr ? rate->find("rate") : nullptr;
  return code != nullptr && code->string() != nullptr && *code->string() == bundled.code &&
         figure != nullptr && figure->number() != nullptr &&
         figure->number()->doubleValue() == bundled.rate;
}

}  // namespace

bool hasRates(const StoreManager& store) {
  const Value* stored = store.ud().find(kUDUSDRates);
  const Array* rates = stored != nullptr ? stored->array() : nullptr;
  return rates != nullptr && !rates->empty() &&
         std::all_of(rates->begin(), rates->end(),
                     [](const Value& rate) { return rate.dictionary() != nullptr; });
}

std::vector<USDRateRef> bundledUSDRates() {
  const auto table = bundledRatesTable();
  std::vector<USDRateRef> rates;
  rates.reserve(table.size());
  for (const BundledRate& rate : table) {
    rates.push_back(USDRate::make(rate.rate, std::string(rate.code)));
  }
  return rates;
}

Date bundledRatesDay() noexcept {
  return bundledRatesDate();
}

bool seedBundledRates(StoreManager& store) {
  if (hasRates(store)) return false;
  try {
    Dictionary content = store.ud();
    content.set(kUDUSDRates, bundledRates());
    content.set(kUDUSDRatesUpdated, bundledRatesDate());
    store.setUd(std::move(content));
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

bool hasBundledRates(const StoreManager& store) {
  const Value* updated = store.ud().find(kUDUSDRatesUpdated);
  const Date* date = updated != nullptr ? updated->date() : nullptr;
  if (date == nullptr || *date != bundledRatesDate()) return false;
  const Value* stored = store.ud().find(kUDUSDRates);
  const Array* rates = stored != nullptr ? stored->array() : nullptr;
  const auto table = bundledRatesTable();
  return rates != nullptr &&
         std::equal(rates->begin(), rates->end(), table.begin(), table.end(), isBundled);
}

}  // namespace fexora
