// The rate between an ordered pair of currencies.
//
// `rate` says how many units of `dst` one unit of `src` buys: the one statement of the direction
// that every rate of the system keeps to.
#pragma once

#include <string>

#include "fexora/catalogue/Currency.h"
#include "fexora/platform/values/NSObject.h"

namespace fexora {

// Reachable by name: "rate" (read and write) and "description".
class FEXORA_API Rate : public NSObject {
 public:
  // No currencies yet, and a rate of 0.0.
  Rate() : rate_(0.0) {}
  Rate(CurrencyRef src, CurrencyRef dst, NSNumber rate)
      : src_(std::move(src)), dst_(std::move(dst)), rate_(rate) {}

  virtual const CurrencyRef& src() const { return src_; }
  virtual void setSrc(CurrencyRef src) { src_ = std::move(src); }
  virtual const CurrencyRef& dst() const { return dst_; }
  virtual void setDst(CurrencyRef dst) { dst_ = std::move(dst); }
  virtual NSNumber rate() const { return rate_; }
  virtual void setRate(NSNumber rate) { rate_ = rate; }
  // "USD -> EUR = 0.900000", the rate taken through a 32-bit float; an unset currency shows as an
  // empty code.
  std::string description() const override;

  std::optional<Value> valueForKey(std::string_view name) const override;
  bool setValueForKey(std::string_view name, const Value& value) override;

 private:
  CurrencyRef src_;
  CurrencyRef dst_;
  NSNumber rate_;
};

}  // namespace fexora
