#include "fexora/catalogue/NSCurrency.h"

#include <utility>
#include <vector>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/platform/base/Guarded.h"

namespace fexora {
namespace {

constexpr std::string_view kMaking = "Making a display record";

// What a handed-out reference keeps alive.
struct HandedOut {
  CurrencyRef keeper;
  NSCurrencyRef record;
};

}  // namespace

NSCurrency::NSCurrency(CurrencyRef currency, Platform& platform)
    : platform_(platform), counted_(std::move(currency)) {}

CurrencyRef NSCurrency::currency() const {
  return keeper_ != nullptr ? keeper_->weak_from_this().lock() : counted_;
}

void NSCurrency::setCurrency(CurrencyRef currency) {
  show(std::move(currency));
}

void NSCurrency::show(CurrencyRef currency) {
  const bool keepsThis = currency != nullptr && currency->display_.get() == this;
  // One that nothing counts cannot be found again, but cannot be kept alive either.
  const bool isCounted = currency.use_count() != 0;
  keeper_ = keepsThis && isCounted ? currency.get() : nullptr;
  counted_ = keeper_ == nullptr ? std::move(currency) : nullptr;
}

void NSCurrency::keeperEnds(const Currency& keeper) noexcept {
  if (keeper_ != &keeper && counted_.get() != &keeper) return;
  CurrencyRef same;
  guarded(*platform_.log, "Keeping a display record's code",
          [&] { same = Currency::make(keeper.code()); });
  show(std::move(same));
}

std::string NSCurrency::description() const {
  const CurrencyRef shown = currency();
  if (shown == nullptr) return {};
  return "(" + shown->code() + ") " + localizedString(*platform_.strings, shown->code());
}

Currency::~Currency() {
  if (display_ != nullptr && display_.use_count() > 1) display_->keeperEnds(*this);
}

NSCurrencyRef Currency::_NSCurrency() {
  Platform& platform = Platform::process();
  return guardedOr(*platform.log, kMaking, NSCurrencyRef(),
                   [&] { return displayRecord(platform); });
}

NSCurrencyRef Currency::displayRecord(Platform& platform) {
  const CurrencyRef self = weak_from_this().lock();
  if (display_ == nullptr) {
    display_ = std::make_shared<NSCurrency>(nullptr, platform);
    display_->show(self != nullptr ? self : CurrencyRef(std::shared_ptr<void>(), this));
  }
  if (self == nullptr) return display_;
  const auto handed = std::make_shared<HandedOut>(HandedOut{self, display_});
  return {handed, display_.get()};
}

void Currency::set_NSCurrency(NSCurrencyRef record) {
  // A handed-out reference counts this currency too, which may not keep itself alive.
  if (record != nullptr) {
    if (auto own = record->weak_from_this().lock()) record = std::move(own);
  }
  const NSCurrencyRef replaced = std::exchange(display_, std::move(record));
  for (const NSCurrencyRef& changed : {replaced, display_}) {
    if (changed != nullptr) changed->show(changed->currency());
  }
}

std::vector<NSCurrencyRef> CurrencyManager::getNSCurrenciesFromCurrencies(
    const std::vector<CurrencyRef>& currencies) const {
  std::vector<NSCurrencyRef> records;
  guarded(*platform_.log, kMaking, [&] {
    records.reserve(currencies.size());
    for (const CurrencyRef& currency : currencies) {
      if (currency != nullptr) records.push_back(currency->displayRecord(platform_));
    }
  });
  return records;
}

}  // namespace fexora
