// One line of a conversion: an amount in a source currency and what it gives in one destination.
#pragma once

#include <string>

#include "fexora/records/Rate.h"

namespace fexora {

struct FEXORA_API ConvertedItem {
  // From a rate whose currencies are set. `dstAmount` is amount × rate, or with `invert` amount ÷
  // rate (the worth in `src` of `amount` units of `dst`), in double arithmetic and unguarded: a
  // rate of zero can give an infinite amount. `invert` changes nothing else: the currencies stay
  // the rate's.
  ConvertedItem(const Rate& from, NSNumber amount, bool invert);
  // The same without a rate record, for PairRates only: public, so that a list makes it in place.
  class Key {
    friend class PairRates;
    friend struct ConvertedItem;
    Key() noexcept = default;
  };
  ConvertedItem(Key /*key*/, const CurrencyRef& src, const CurrencyRef& dst, NSNumber pairRate,
                NSNumber amount, bool invert)
      : srcCurrency(src),
        dstCurrency(dst),
        rate(pairRate),
        srcAmount(amount),
        dstAmount(invert ? amount.doubleValue() / pairRate.doubleValue()
                         : amount.doubleValue() * pairRate.doubleValue()) {}

  // "From 100.0000(USD) To 90.0000(EUR)", the amounts taken through 32-bit floats.
  std::string description() const;

  CurrencyRef srcCurrency;
  CurrencyRef dstCurrency;
  NSNumber rate;
  NSNumber srcAmount;
  NSNumber dstAmount;  // a real
};

}  // namespace fexora
