// Rates that the store's newest table does not hold: of withdrawn currencies by their successors,
// of older tables and other sources that it keeps beside, and the bundle's.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::program {

// Where a rate is from that is not the newest table's.
struct RateOrigin {
  std::optional<Date> published;
  std::string source;  // its own name, or empty
  Freshness::Origin origin = Freshness::Origin::bundled;
};

class OtherRates {
 public:
  explicit OtherRates(const StoreManager& store);

  struct Found {
    Rate rate;
    std::optional<RateOrigin> of;  // when it is not of the store's newest table
  };
  // By the fixed ratios of law where these need be. From the newest table that has both currencies,
  // and from that alone, so that no rate mixes two days.
  std::optional<Found> find(const CurrencyRef& source, const CurrencyRef& destination) const;

 private:
  struct Table {
    std::unordered_map<std::string, double> rates;  // by code; see USDRate
    std::optional<RateOrigin> of;
  };
  static Table tableOf(std::vector<USDRateRef> rates, std::optional<RateOrigin> of);

  std::vector<Table> tables_;
};

}  // namespace fexora::program
