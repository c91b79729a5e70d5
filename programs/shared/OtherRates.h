// Rates that the store does not hold: of withdrawn currencies by their successors, and the
// bundle's.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "fexora/fexora.h"

namespace fexora::program {

class OtherRates {
 public:
  explicit OtherRates(const StoreManager& store);

  struct Found {
    Rate rate;
    std::optional<Date> published;  // when it is of another day than the store's rates
  };
  // From the store's rates and the fixed ratios of law where these have both currencies, else from
  // the bundle alone, so that no rate mixes two days.
  std::optional<Found> find(const CurrencyRef& source, const CurrencyRef& destination) const;

 private:
  using Rates = std::unordered_map<std::string, double>;  // by code; see USDRate
  static Rates byCode(std::vector<USDRateRef> rates);
  static std::optional<Rate> pair(const Rates& rates, const CurrencyRef& source,
                                  const CurrencyRef& destination);

  Rates stored_;
  Rates bundled_;
};

}  // namespace fexora::program
