// The display record of a currency: a root-class object, so that its text can be reached by name.
//
// A currency has one display record, the same object at each `_NSCurrency` read; its members for
// that, and CurrencyManager::getNSCurrenciesFromCurrencies, are defined here.
//
// Ownership: a reference that a read hands out keeps both alive, so its record shows its currency
// after everything else is gone. The currency keeps its record; the record counts its currency
// except where that would close a ring (a record in its own currency), so nothing leaks. A record
// that a host made itself and wrote into its currency, and that outlives the currency, shows a new
// currency with the same code from then on.
// A currency that no reference counts must outlive the records it has handed out; one in the shared
// catalogue does.
// One thread at a time.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "fexora/platform/Platform.h"
#include "fexora/platform/foundation/NSObject.h"
#include "fexora/records/Currency.h"

namespace fexora {

// Reachable by name: the member "description". The selector "init" makes nothing, since there is no
// display record without a currency.
class FEXORA_API NSCurrency : public NSObject, public std::enable_shared_from_this<NSCurrency> {
 public:
  // Names come from the platform's host strings.
  explicit NSCurrency(CurrencyRef currency, Platform& platform = Platform::process());
  NSCurrency(const NSCurrency&) = delete;
  NSCurrency& operator=(const NSCurrency&) = delete;

  // Null once it has been cleared.
  virtual CurrencyRef currency() const;
  virtual void setCurrency(CurrencyRef currency);

  // "(USD) US Dollar": the code, then the host's name for it or the code again. Worked out anew at
  // each read; empty when the currency has been cleared.
  std::string description() const override;

 private:
  friend class Currency;

  bool closesRing(const Currency& currency) const;
  // Counts its currency unless that would close a ring.
  void settle();
  void currencyEnds(const Currency& ending);

  Platform& platform_;
  CurrencyRef counted_;
  std::weak_ptr<Currency> uncounted_;  // instead of counted_ where that would close a ring
};

}  // namespace fexora
