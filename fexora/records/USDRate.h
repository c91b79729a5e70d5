// The rate of one currency against the US dollar: the only kind of rate that enters the system.
//
// `rate` says how many units of the currency one US dollar buys.
// JSON form: {"rate": number, "code": text}. A text under "rate" is read as a typed amount of the
// current locale (records/Transforms.h): "0.9" is 0.9 where the decimal mark is the point or the
// comma, and 0.0, like any text that is no number, where it is another sign (as in Arabic). A code
// is read as one line of at most limits::kCodeCharacters: see platform/text/OneLine.h. One thread
// at a time.
#pragma once

#include <memory>
#include <string>

#include "fexora/catalogue/Currency.h"

namespace fexora {

class USDRate;
using USDRateRef = std::shared_ptr<USDRate>;

class FEXORA_API USDRate : public MappableModel {
 public:
  static USDRateRef make();
  static USDRateRef make(NSNumber rate, std::string code);

  USDRate() : rate_(0.0) {}
  USDRate(NSNumber rate, std::string code) : rate_(rate), code_(std::move(code)) {}

  using MappableModel::mapping;
  std::size_t hashValue() const override;
  void mapping(Map& map) override;
  // The codes are equal and not empty; the rates are not compared.
  bool isEqualTo(const MappableModel& object) const override;

  virtual NSNumber rate() const { return rate_; }
  virtual void setRate(NSNumber rate) { rate_ = rate; }
  virtual const std::string& code() const { return code_; }
  virtual void setCode(std::string code) { code_ = std::move(code); }
  // The shared catalogue's record with this code, looked up anew; null when it has none.
  virtual CurrencyRef currency() const;

 private:
  NSNumber rate_;
  std::string code_;
};

}  // namespace fexora
