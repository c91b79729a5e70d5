// The display record of a currency: a root-class object, so that its text can be reached by name.
//
// A currency has one display record, the same object at each `_NSCurrency` read; its members for
// that, and CurrencyManager::getNSCurrenciesFromCurrencies, are defined here.
//
// Ownership: a currency keeps its record, and a record counts the currency that it shows unless
// that is the very one that keeps it. So neither keeps itself alive. A reference that a read hands
// out counts the currency too, so its record shows it after everything else is gone. A record that
// outlives the currency that keeps it shows a new one with the same code from then on.
// A host that crosses records (a currency keeps the record that shows another, and that one the
// first's) has made a ring of its own, which lives until one of them is written anew.
// A currency that no reference counts must outlive the records that it does not keep; one in the
// shared catalogue does.
// One thread at a time.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "fexora/catalogue/Currency.h"
#include "fexora/platform/Platform.h"
#include "fexora/platform/values/NSObject.h"

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
  using std::enable_shared_from_this<NSCurrency>::shared_from_this;
  using std::enable_shared_from_this<NSCurrency>::weak_from_this;
  friend class Currency;

  // The one place where the reference to the currency is set.
  void show(CurrencyRef currency);
  void keeperEnds(const Currency& keeper) noexcept;

  Platform& platform_;
  CurrencyRef counted_;
  Currency* keeper_ = nullptr;  // instead of counted_, where the currency shown keeps this record
};

}  // namespace fexora
