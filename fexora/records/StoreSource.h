// The amount that a person last converted, with its currency, as the store file keeps it.
//
// JSON form: {"amount": number, "currency": {"code": text}}. A currency read from there is a record
// of its own, equal to the catalogue's of the same code.
// One thread at a time.
#pragma once

#include <memory>

#include "fexora/catalogue/Currency.h"

namespace fexora {

class StoreSource;
using StoreSourceRef = std::shared_ptr<StoreSource>;

class FEXORA_API StoreSource : public MappableModel {
 public:
  static StoreSourceRef make();
  static StoreSourceRef make(NSNumber amount, CurrencyRef currency);

  // The integer 0, and no currency yet.
  StoreSource() = default;
  StoreSource(NSNumber amount, CurrencyRef currency)
      : amount_(amount), currency_(std::move(currency)) {}

  using MappableModel::mapping;
  void mapping(Map& map) override;

  virtual NSNumber amount() const { return amount_; }
  virtual void setAmount(NSNumber amount) { amount_ = amount; }
  virtual const CurrencyRef& currency() const { return currency_; }
  virtual void setCurrency(CurrencyRef currency) { currency_ = std::move(currency); }

 private:
  NSNumber amount_;
  CurrencyRef currency_;
};

}  // namespace fexora
