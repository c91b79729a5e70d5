// The rate from one currency to another: that of the pairs, else another one that is at hand.
#pragma once

#include <optional>

#include "fexora/fexora.h"

#include "programs/shared/OtherRates.h"

namespace fexora::program {

// What every line of every program shows. Both managers outlive it. It holds the rates as they were
// at its first look beyond the pairs, so whoever keeps one makes another when the rates change.
class PairFinder {
 public:
  PairFinder(const RateManager& rates, const StoreManager& store) : rates_(rates), store_(store) {}

  using Found = OtherRates::Found;
  // A rate of the pairs that is no positive number, as a damaged store has it, counts as none.
  // Nothing from a currency to itself.
  std::optional<Found> find(const CurrencyRef& source, const CurrencyRef& destination) const;

 private:
  const RateManager& rates_;
  const StoreManager& store_;
  mutable std::optional<OtherRates> others_;
};

}  // namespace fexora::program
