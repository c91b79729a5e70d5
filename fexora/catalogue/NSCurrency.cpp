#include "fexora/catalogue/NSCurrency.h"

#include <utility>
#include <vector>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/platform/foundation/Guarded.h"

namespace fexora {
namespace {

// What a handed-out reference keeps alive.
struct HandedOut {
  CurrencyRef owner;
  CurrencyRef shown;  // usually the owner
  NSCurrencyRef record;
};

bool isCounted(const CurrencyRef& currency) {
  return currency.use_count() != 0;
}

bool haveOneOwner(const std::weak_ptr<Currency>& a, const std::weak_ptr<const Currency>& b) {
  return !a.owner_before(b) && !b.owner_before(a);
}

}  // namespace

NSCurrency::NSCurrency(CurrencyRef currency, Platform& platform)
    : platform_(platform), counted_(std::move(currency)) {}

CurrencyRef NSCurrency::currency() const {
  return counted_ != nullptr ? counted_ : uncounted_.lock();
}

void NSCurrency::setCurrency(CurrencyRef currency) {
  counted_ = std::move(currency);
  uncounted_.reset();
  settle();
}

std::string NSCurrency::description() const {
  const CurrencyRef shown = currency();
  if (shown == nullptr) return {};
  return "(" + shown->code() + ") " + localizedString(*platform_.strings, shown->code());
}

// Each currency keeps one record and each record shows one currency, so there is one way to walk,
// and it comes back here or ends.
bool NSCurrency::closesRing(const Currency& currency) const {
  for (const Currency* at = &currency; at != nullptr;) {
    const NSCurrency* const record = at->display_.get();
    if (record == this) return true;
    at = record != nullptr && isCounted(record->counted_) ? record->counted_.get() : nullptr;
  }
  return false;
}

void NSCurrency::settle() {
  const CurrencyRef shown = currency();
  if (shown == nullptr || !isCounted(shown)) return;
  const bool ring = closesRing(*shown);
  counted_ = ring ? nullptr : shown;
  uncounted_ = ring ? shown : nullptr;
}

void NSCurrency::currencyEnds(const Currency& ending) {
  const bool wasUncounted = haveOneOwner(uncounted_, ending.weak_from_this()) &&
                            !haveOneOwner(uncounted_, std::weak_ptr<Currency>());
  if (counted_.get() == &ending || wasUncounted) setCurrency(Currency::make(ending.code_));
}

Currency::~Currency() {
  if (display_ != nullptr && display_.use_count() > 1) display_->currencyEnds(*this);
}

NSCurrencyRef Currency::_NSCurrency() {
  return displayRecord(Platform::process());
}

NSCurrencyRef Currency::displayRecord(Platform& platform) {
  const CurrencyRef self = weak_from_this().lock();
  if (display_ == nullptr) {
    display_ = std::make_shared<NSCurrency>(
        self != nullptr ? self : CurrencyRef(std::shared_ptr<void>(), this), platform);
    display_->settle();
  }
  if (self == nullptr) return display_;
  const auto handed = std::make_shared<HandedOut>(HandedOut{self, display_->currency(), display_});
  return {handed, display_.get()};
}

void Currency::set_NSCurrency(NSCurrencyRef record) {
  // A handed-out reference counts this currency too, which may not keep itself alive.
  if (record != nullptr) {
    if (auto own = record->weak_from_this().lock()) record = std::move(own);
  }
  const NSCurrencyRef replaced = std::exchange(display_, std::move(record));
  // The new one first, since a walk needs all rings but its own to be broken.
  if (display_ != nullptr) display_->settle();
  if (replaced != nullptr) replaced->settle();
}

std::vector<NSCurrencyRef> CurrencyManager::getNSCurrenciesFromCurrencies(
    const std::vector<CurrencyRef>& currencies) const {
  std::vector<NSCurrencyRef> records;
  guarded(*platform_.log, "Making display records", [&] {
    records.reserve(currencies.size());
    for (const CurrencyRef& currency : currencies) {
      if (currency != nullptr) records.push_back(currency->displayRecord(platform_));
    }
  });
  return records;
}

}  // namespace fexora
