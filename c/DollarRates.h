// The rates of a session as they are at one moment, for look-ups by place: the tables that it has,
// each of one day and source. Immutable once made; any thread.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "fexora/records/USDRate.h"
#include "fexora/store/StoreManager.h"

#include "c/Codes.h"

namespace fexora::c {

class DollarRates {
 public:
  struct Pair {
    double rate;
    double published;  // seconds since 1970, or not-a-number
  };

  // From units that one US dollar buys, in which the first of a code counts. A currency whose ratio
  // to another one of the list is law's gets its rate by that, listed or not. May throw
  // std::bad_alloc.
  DollarRates(std::vector<USDRateRef> rates, double published);
  // Those that come with the library, made once.
  static const std::shared_ptr<const DollarRates>& bundled();

  bool has(std::uint32_t place) const { return units_[place] > 0; }
  // Units of `to` that one of `from` buys; false where one of them has no rate.
  bool pair(std::uint32_t from, std::uint32_t to, Pair& found) const;
  // The codes with a rate, in the catalogue's order.
  std::vector<const char*> codes() const;

 private:
  std::vector<double> units_;  // by place; 0: none
  double published_;
};

class SessionRates {
 public:
  // The store's list, of the day `published` (seconds since 1970, or not-a-number), then what it
  // keeps beside it and the bundled ones, the newest first. May throw std::bad_alloc.
  SessionRates(const StoreManager& store, double published);

  // The pair by the first table that has both; FEXORA_NO_RATE where none has.
  Outcome pair(std::uint32_t from, std::uint32_t to, DollarRates::Pair& found) const;
  // The codes that the store's list has.
  std::vector<const char*> codes() const { return tables_.front()->codes(); }

 private:
  std::vector<std::shared_ptr<const DollarRates>> tables_;  // never empty
};

using SessionRatesRef = std::shared_ptr<const SessionRates>;

}  // namespace fexora::c
