#include "fexora/records/StoreSource.h"

#include "fexora/platform/mapping/Map.h"
#include "fexora/platform/mapping/Mapper.h"

namespace fexora {

StoreSourceRef StoreSource::make() {
  return std::make_shared<StoreSource>();
}

StoreSourceRef StoreSource::make(NSNumber amount, CurrencyRef currency) {
  return std::make_shared<StoreSource>(amount, std::move(currency));
}

void StoreSource::mapping(Map& map) {
  map.bind("amount", amount_);
  map.bind("currency", currency_);
}

}  // namespace fexora
