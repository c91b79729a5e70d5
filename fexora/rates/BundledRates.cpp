#include "fexora/rates/BundledRates.h"

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

}  // namespace

bool seedBundledRates(StoreManager& store) {
  const auto present = store.loadUSDRates();
  if (present && !present->empty()) return false;
  Dictionary content = store.ud();
  content.set(kUDUSDRates, bundledRates());
  content.set(kUDUSDRatesUpdated, bundledRatesDate());
  store.setUd(std::move(content));
  return true;
}

}  // namespace fexora
