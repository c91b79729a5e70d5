#include "programs/shared/PairFinder.h"

namespace fexora::program {

std::optional<PairFinder::Found> PairFinder::find(const CurrencyRef& source,
                                                  const CurrencyRef& destination) const {
  if (source->code() == destination->code()) return std::nullopt;
  const auto rate = rates_.rateForSourceCurrency(source, destination);
  if (rate && rate->rate().doubleValue() > 0) return Found{*rate, std::nullopt};
  if (!others_) others_.emplace(store_);
  return others_->find(source, destination);
}

}  // namespace fexora::program
