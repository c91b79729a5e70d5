// Every pair rate among the currencies in use, derived through the US dollar and kept as one rate
// per currency.
//
// The sequence is this list, of which nothing is ever stored. Let L be the USD rates whose currency
// is selected, in their order, and r(X) the rate of entry X. For each entry a of L that is not the
// US dollar:
//   USD -> A with r(a); A -> USD with 1 ÷ r(a); and for each entry b of L with another code, in
//   order, A -> B with r(b) ÷ r(a).
// Doubles, no rounding, nothing left out: a rate of zero gives infinite rates or not-a-number, a
// code that occurs twice in L gives two groups, and an entry for the dollar itself gives each group
// a second pair to the dollar. Without "USD" in the catalogue there are no pairs.
//
// Deriving takes O(n) time and memory, looking a pair up O(1), one source's rates O(result).
// A value of the class is immutable; any thread. The catalogue outlives it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <span>
#include <vector>

#include "fexora/catalogue/CataloguePlaces.h"
#include "fexora/rates/KnownRates.h"
#include "fexora/records/Converted.h"
#include "fexora/records/Rate.h"

namespace fexora {

class FEXORA_API PairRates {
 public:
  class Iterator;

  PairRates() = default;  // no pairs
  PairRates(const CurrencyManager& catalogue, const std::vector<KnownRate>& usdRates,
            const std::vector<CurrencyRef>& selection);

  std::size_t size() const noexcept { return starts_.empty() ? 0 : starts_.back(); }
  bool empty() const noexcept { return size() == 0; }
  // The pair at `index` < size().
  Rate operator[](std::size_t index) const;
  Iterator begin() const noexcept;
  Iterator end() const noexcept;

  // The first pair from `src` to `dst`, by equality of records.
  std::optional<Rate> find(const Currency& src, const Currency& dst) const;
  // How many pairs there are from `src`.
  std::size_t linesFrom(const Currency& src) const;
  // One line for each pair from `src`, in order; of more than limits::kConversionLines the first.
  std::vector<ConvertedItem> convert(const Currency& src, NSNumber amount, bool invert) const;

  // The amounts of all these lines, in order and without limit, into `amounts` as far as that
  // reaches; gives how many there are. No memory is taken.
  std::size_t convertInto(std::span<double> amounts, const Currency& src, double amount,
                          bool invert) const;

 private:
  static constexpr std::uint32_t kNone = CataloguePlaces::kNone;

  void filterUSDRatesForCurrencies(const std::vector<KnownRate>& usdRates,
                                   const std::vector<CurrencyRef>& selection);
  void link();
  const CurrencyRef& currencyAt(std::uint32_t place) const;
  std::uint32_t place(const Currency& currency) const;
  double rateAt(std::uint32_t entry) const { return values_[entry]; }
  Rate pairInGroup(std::uint32_t entry, std::size_t offset) const;
  void convertFromDollar(std::size_t count, NSNumber amount, bool invert,
                         std::vector<ConvertedItem>& items) const;
  template <class Fill>
  void eachRunWithout(std::uint32_t place, Fill fill) const;
  void convertGroup(std::uint32_t entry, std::size_t count, NSNumber amount, bool invert,
                    std::vector<ConvertedItem>& items) const;

  const CurrencyManager* catalogue_ = nullptr;
  std::uint32_t dollar_ = kNone;       // the US dollar's place in the catalogue
  std::vector<std::uint32_t> places_;  // of each entry of L
  std::vector<NSNumber> rates_;        // of each entry of L
  std::vector<double> values_;         // the same as doubles, side by side
  std::vector<std::uint32_t> next_;    // the next entry of L with the same code
  std::vector<std::uint32_t> first_;   // by place in the catalogue: its first entry of L
  std::vector<std::uint32_t> groups_;  // the entries of L that are not the dollar's
  std::vector<std::size_t> starts_;    // each group's first index, and the size at the end
};

class PairRates::Iterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = Rate;
  using difference_type = std::ptrdiff_t;
  using pointer = const Rate*;
  using reference = Rate;

  Iterator(const PairRates& rates, std::size_t index) : rates_(&rates), index_(index) {}
  Rate operator*() const { return (*rates_)[index_]; }
  Iterator& operator++() {
    ++index_;
    return *this;
  }
  friend bool operator==(const Iterator& a, const Iterator& b) { return a.index_ == b.index_; }

 private:
  const PairRates* rates_;
  std::size_t index_;
};

inline PairRates::Iterator PairRates::begin() const noexcept {
  return {*this, 0};
}
inline PairRates::Iterator PairRates::end() const noexcept {
  return {*this, size()};
}

}  // namespace fexora
