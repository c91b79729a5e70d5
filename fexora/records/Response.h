// The rates service's answer.
//
// JSON form: {"serviceMessage": text, "updated": number, "source": text, "count": number,
// "rates": [{"code", "rate"}…]}; other keys are ignored. A key that is missing or of another type
// leaves its field at the initial value; one element of "rates" that is no object leaves the whole
// list empty. Each of the two texts is read as one line: see platform/text/OneLine.h. The library
// uses the message and the rates; the date and the source go into what it says of their age
// (rates/Freshness.h).
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "fexora/platform/values/Date.h"
#include "fexora/records/USDRate.h"

namespace fexora {

class FEXORA_API Response : public MappableModel {
 public:
  using MappableModel::mapping;
  void mapping(Map& map) override;

  virtual const std::string& serviceMessage() const { return serviceMessage_; }
  virtual void setServiceMessage(std::string message) { serviceMessage_ = std::move(message); }
  virtual NSNumber updated() const { return updated_; }
  virtual void setUpdated(NSNumber updated) { updated_ = updated; }
  // When the rates were published: `updated` as seconds since 1970, or as milliseconds, where it
  // can be a time of this century; nothing for any other number.
  std::optional<Date> published() const;
  virtual const std::string& source() const { return source_; }
  virtual void setSource(std::string source) { source_ = std::move(source); }
  virtual NSNumber count() const { return count_; }
  virtual void setCount(NSNumber count) { count_ = count; }
  virtual const std::vector<USDRateRef>& rates() const { return rates_; }
  virtual void setRates(std::vector<USDRateRef> rates) { rates_ = std::move(rates); }

 private:
  std::string serviceMessage_;
  NSNumber updated_;
  std::string source_;
  NSNumber count_;
  std::vector<USDRateRef> rates_;
};

}  // namespace fexora
