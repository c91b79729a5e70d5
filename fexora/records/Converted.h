// A whole conversion: its lines, in the order in which the rates stand.
#pragma once

#include <optional>
#include <vector>

#include "fexora/platform/values/NSObject.h"
#include "fexora/records/ConvertedItem.h"

namespace fexora {

class FEXORA_API Converted : public NSObject {
 public:
  virtual const std::vector<ConvertedItem>& items() const& { return items_; }
  // Of a conversion that goes away, as in convertAmount(…).first.items().
  std::vector<ConvertedItem> items() && { return std::move(items_); }
  virtual void setItems(std::vector<ConvertedItem> items) { items_ = std::move(items); }

  // The first line whose destination equals `currency`; nothing when none does.
  virtual std::optional<ConvertedItem> itemForDstCurrency(const CurrencyRef& currency) const;

 private:
  std::vector<ConvertedItem> items_;
};

}  // namespace fexora
