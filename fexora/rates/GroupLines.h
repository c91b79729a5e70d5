// The lines of a conversion from one currency to the others, made in place in their list.
//
// A list that grows line by line reads and writes its own end for each: a third of the work. Filled
// from a sequence whose length it knows, it does so once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <vector>

#include "fexora/records/ConvertedItem.h"

namespace fexora {

// Lines from `source`, of which one US dollar buys `rate` units. Entry i has the currency
// currencies[places[i]] and the rate rates[i] against the dollar. All that is referred to outlives
// this. Any thread.
class GroupLines {
 public:
  GroupLines(const CurrencyRef* currencies, const std::uint32_t* places, const NSNumber* rates,
             const CurrencyRef& source, double rate, const NSNumber& amount, const bool& invert)
      : currencies_(currencies),
        places_(places),
        rates_(rates),
        source_(source),
        rate_(rate),
        amount_(amount),
        worth_(amount.doubleValue()),
        invert_(invert) {}

  // Adds the lines to the entries from `first` to before `end`.
  void append(std::size_t first, std::size_t end, std::vector<ConvertedItem>& items) const;

 private:
  class Iterator;

  ConvertedItem::Parts line(std::size_t entry) const {
    const double pair = rates_[entry].doubleValue() / rate_;
    return {source_, currencies_[places_[entry]], pair, amount_,
            invert_ ? worth_ / pair : worth_ * pair};
  }

  const CurrencyRef* currencies_;
  const std::uint32_t* places_;
  const NSNumber* rates_;
  const CurrencyRef& source_;
  double rate_;
  // By reference: a sequence is copied in wide moves, which would wait for narrow members.
  const NSNumber& amount_;
  double worth_;
  const bool& invert_;
};

class GroupLines::Iterator {
 public:
  using iterator_category = std::forward_iterator_tag;
  using value_type = ConvertedItem::Parts;
  using difference_type = std::ptrdiff_t;
  using pointer = const ConvertedItem::Parts*;
  using reference = ConvertedItem::Parts;

  Iterator(const GroupLines& lines, std::size_t entry) : lines_(lines), entry_(entry) {}
  ConvertedItem::Parts operator*() const { return lines_.line(entry_); }
  Iterator& operator++() {
    ++entry_;
    return *this;
  }
  friend bool operator==(const Iterator& a, const Iterator& b) { return a.entry_ == b.entry_; }

 private:
  GroupLines lines_;  // a copy, which no line that is written could change
  std::size_t entry_;
};

inline void GroupLines::append(std::size_t first, std::size_t end,
                               std::vector<ConvertedItem>& items) const {
  items.insert(items.end(), Iterator(*this, first), Iterator(*this, end));
}

}  // namespace fexora
