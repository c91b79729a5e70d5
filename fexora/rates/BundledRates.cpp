#include "fexora/rates/BundledRates.h"

#include <algorithm>
#include <new>
#include <utility>

#include "fexora/platform/mapping/MapSource.h"
#include "fexora/resources/BundledRatesTable.h"

namespace fexora {
namespace {

// In the form in which the store keeps rates: see USDRate's JSON form.
Value bundledRates() {
  const auto table = bundledRatesTable();
  Array rates;
  rates.reserve(table.size());
  for (const BundledRate& rate : table) {
    rates.emplace_back(Dictionary{{"code", std::string_view(rate.code)}, {"rate", rate.rate}});
  }
  return rates;
}

bool isBundled(const MapSource& stored, const BundledRate& bundled) {
  Value scratch;
  const Value* code = stored.find("code", scratch);
  if (code == nullptr || code->string() == nullptr ||
      *code->string() != std::string_view(bundled.code))
    return false;
  const Value* figure = stored.find("rate", scratch);
  return figure != nullptr && figure->number() != nullptr &&
         figure->number()->doubleValue() == bundled.rate;
}

}  // namespace

bool hasRates(const StoreManager& store) {
  const Value* stored = store.ud().find(kUDUSDRates);
  return stored != nullptr && countDictionaries(*stored).value_or(0) > 0;
}

std::vector<USDRateRef> bundledUSDRates() {
  const auto table = bundledRatesTable();
  std::vector<USDRateRef> rates;
  rates.reserve(table.size());
  for (const BundledRate& rate : table) {
    rates.push_back(USDRate::make(rate.rate, std::string(std::string_view(rate.code))));
  }
  return rates;
}

Date bundledRatesDay() noexcept {
  return bundledRatesDate();
}

std::size_t rankBeforeBundle(std::vector<RatesTable>& tables) {
  const Date day = bundledRatesDay();
  const auto first = std::stable_partition(
      tables.begin(), tables.end(),
      [day](const RatesTable& table) { return !table.published || !(*table.published < day); });
  return static_cast<std::size_t>(first - tables.begin());
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
  const auto table = bundledRatesTable();
  if (stored == nullptr || countDictionaries(*stored) != table.size()) return false;
  bool areBundled = true;
  visitDictionaries(*stored, [&](const MapSource& rate, std::size_t left) {
    areBundled = areBundled && isBundled(rate, table[table.size() - left]);
  });
  return areBundled;
}

}  // namespace fexora
