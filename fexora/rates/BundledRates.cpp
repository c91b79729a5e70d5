#include "fexora/rates/BundledRates.h"

#include <new>
#include <utility>

#include "fexora/platform/mapping/Mapper.h"
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
  try {
    // The store's own reading answers nothing, too, when there is no memory for its rates.
    const Value* kept = store.ud().find(kUDUSDRates);
    const auto present = kept != nullptr ? Mapper<USDRate>::mapArray(*kept) : std::nullopt;
    if (present && !present->empty()) return false;
    Dictionary content = store.ud();
    content.set(kUDUSDRates, bundledRates());
    content.set(kUDUSDRatesUpdated, bundledRatesDate());
    store.setUd(std::move(content));
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

}  // namespace fexora
