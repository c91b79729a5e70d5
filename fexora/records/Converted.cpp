#include "fexora/records/Converted.h"

namespace fexora {

std::optional<ConvertedItem> Converted::itemForDstCurrency(const CurrencyRef& currency) const {
  if (currency == nullptr) return std::nullopt;
  for (const ConvertedItem& item : items_) {
    if (item.dstCurrency != nullptr && *item.dstCurrency == *currency) return item;
  }
  return std::nullopt;
}

}  // namespace fexora
