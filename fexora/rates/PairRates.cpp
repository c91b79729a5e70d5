#include "fexora/rates/PairRates.h"

#include <algorithm>

#include "fexora/platform/base/Limits.h"

namespace fexora {

PairRates::PairRates(const CurrencyManager& catalogue, const std::vector<KnownRate>& usdRates,
                     const std::vector<CurrencyRef>& selection)
    : catalogue_(&catalogue), dollar_(CataloguePlaces(catalogue).ofCode("USD")) {
  if (dollar_ == kNone) return;
  filterUSDRatesForCurrencies(usdRates, selection);
  link();
}

void PairRates::filterUSDRatesForCurrencies(const std::vector<KnownRate>& usdRates,
                                            const std::vector<CurrencyRef>& selection) {
  std::vector<bool> selected(catalogue_->currencies().size());
  for (const CurrencyRef& currency : selection) {
    const std::uint32_t at = currency != nullptr ? place(*currency) : kNone;
    if (at != kNone) selected[at] = true;
  }
  const std::size_t most = usdRates.size();
  places_.reserve(most);
  rates_.reserve(most);
  values_.reserve(most);
  for (const KnownRate& known : usdRates) {
    if (!selected[known.place]) continue;
    places_.push_back(known.place);
    rates_.push_back(known.rate);
    values_.push_back(known.rate.doubleValue());
  }
}

// Chains the entries by code and lays out the groups.
void PairRates::link() {
  const auto count = static_cast<std::uint32_t>(places_.size());
  first_.assign(catalogue_->currencies().size(), kNone);
  next_.resize(count);
  std::vector<std::uint32_t> alike(first_.size());
  for (std::uint32_t entry = count; entry-- > 0;) {
    std::uint32_t& first = first_[places_[entry]];
    next_[entry] = first;
    first = entry;
    ++alike[places_[entry]];
  }
  groups_.reserve(count);
  starts_.reserve(count + 1);
  std::size_t start = 0;
  for (std::uint32_t entry = 0; entry < count; ++entry) {
    if (places_[entry] == dollar_) continue;
    groups_.push_back(entry);
    starts_.push_back(start);
    start += 2 + count - alike[places_[entry]];
  }
  starts_.push_back(start);
}

const CurrencyRef& PairRates::currencyAt(std::uint32_t place) const {
  return catalogue_->currencies()[place];
}

// A record with an empty code equals none, not even the catalogue's own.
std::uint32_t PairRates::place(const Currency& currency) const {
  return currency.code().empty() ? kNone : CataloguePlaces(*catalogue_).of(currency);
}

Rate PairRates::operator[](std::size_t index) const {
  const auto after = std::upper_bound(starts_.begin(), starts_.end(), index);
  const auto group = static_cast<std::size_t>(after - starts_.begin()) - 1;
  return pairInGroup(groups_[group], index - starts_[group]);
}

Rate PairRates::pairInGroup(std::uint32_t entry, std::size_t offset) const {
  const CurrencyRef& own = currencyAt(places_[entry]);
  if (offset == 0) return {currencyAt(dollar_), own, rates_[entry]};
  if (offset == 1) return {own, currencyAt(dollar_), 1.0 / rateAt(entry)};
  // Entries with the group's own code are passed over.
  auto other = static_cast<std::uint32_t>(offset - 2);
  for (std::uint32_t same = first_[places_[entry]]; same != kNone && same <= other;
       same = next_[same]) {
    ++other;
  }
  return {own, currencyAt(places_[other]), rateAt(other) / rateAt(entry)};
}

std::optional<Rate> PairRates::find(const Currency& src, const Currency& dst) const {
  if (empty()) return std::nullopt;
  const std::uint32_t from = place(src);
  const std::uint32_t to = place(dst);
  if (from == kNone || to == kNone || from == to) return std::nullopt;
  const std::uint32_t source = first_[from];
  const std::uint32_t target = first_[to];
  if (from == dollar_) {
    if (target == kNone) return std::nullopt;
    return Rate(currencyAt(from), currencyAt(to), rates_[target]);
  }
  if (source == kNone) return std::nullopt;
  if (to == dollar_) return Rate(currencyAt(from), currencyAt(to), 1.0 / rateAt(source));
  if (target == kNone) return std::nullopt;
  return Rate(currencyAt(from), currencyAt(to), rateAt(target) / rateAt(source));
}

std::size_t PairRates::linesFrom(const Currency& src) const {
  const std::uint32_t from = empty() ? kNone : place(src);
  if (from == kNone) return 0;
  if (from == dollar_) return groups_.size();
  std::size_t alike = 0;
  for (std::uint32_t entry = first_[from]; entry != kNone; entry = next_[entry]) ++alike;
  return alike * (1 + places_.size() - alike);
}

std::vector<ConvertedItem> PairRates::convert(const Currency& src, NSNumber amount,
                                              bool invert) const {
  std::vector<ConvertedItem> items;
  const std::size_t count = std::min(linesFrom(src), limits::kConversionLines);
  if (count == 0) return items;
  items.reserve(count);
  const std::uint32_t from = place(src);
  if (from == dollar_) {
    convertFromDollar(count, amount, invert, items);
    return items;
  }
  for (std::uint32_t entry = first_[from]; entry != kNone && items.size() < count;
       entry = next_[entry]) {
    convertGroup(entry, count, amount, invert, items);
  }
  return items;
}

// Both ask the catalogue, whose list is a virtual call away, only once, and add lines up to
// `count`.
void PairRates::convertFromDollar(std::size_t count, NSNumber amount, bool invert,
                                  std::vector<ConvertedItem>& items) const {
  const std::vector<CurrencyRef>& currencies = catalogue_->currencies();
  const CurrencyRef& dollar = currencies[dollar_];
  const ConvertedItem::Key key;
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t entry = groups_[i];
    items.emplace_back(key, dollar, currencies[places_[entry]], rates_[entry], amount, invert);
  }
}

void PairRates::convertGroup(std::uint32_t entry, std::size_t count, NSNumber amount, bool invert,
                             std::vector<ConvertedItem>& items) const {
  const std::vector<CurrencyRef>& currencies = catalogue_->currencies();
  const std::uint32_t own = places_[entry];
  const CurrencyRef& source = currencies[own];
  const double rate = rateAt(entry);
  const ConvertedItem::Key key;
  items.emplace_back(key, source, currencies[dollar_], 1.0 / rate, amount, invert);
  for (std::uint32_t other = 0; other < places_.size() && items.size() < count; ++other) {
    if (places_[other] == own) continue;
    items.emplace_back(key, source, currencies[places_[other]], rateAt(other) / rate, amount,
                       invert);
  }
}

// Runs of entries lie side by side, so that a compiler takes several at once.
template <class Fill>
void PairRates::eachRunWithout(std::uint32_t place, Fill fill) const {
  std::uint32_t begin = 0;
  for (std::uint32_t entry = first_[place]; entry != kNone; entry = next_[entry]) {
    fill(std::span(values_).subspan(begin, entry - begin));
    begin = entry + 1;
  }
  fill(std::span(values_).subspan(begin));
}

std::size_t PairRates::convertInto(std::span<double> amounts, const Currency& src, double amount,
                                   bool invert) const {
  const std::size_t lines = linesFrom(src);
  if (lines == 0) return 0;
  double* to = amounts.data();
  double* const end = to + amounts.size();
  const auto fill = [&](std::span<const double> rates, auto converted) {
    const auto left = static_cast<std::size_t>(end - to);
    const std::span<const double> fitting = rates.first(std::min(left, rates.size()));
    to = std::transform(fitting.begin(), fitting.end(), to, converted);
  };
  // `rates` over `rate`, the source's own, are the pairs' rates.
  const auto fillPairs = [&](std::span<const double> rates, double rate) {
    if (invert) {
      fill(rates, [=](double other) { return amount / (other / rate); });
    } else {
      fill(rates, [=](double other) { return amount * (other / rate); });
    }
  };
  const std::uint32_t from = place(src);
  if (from == dollar_) {
    eachRunWithout(from, [&](std::span<const double> rates) {
      if (invert) {
        fill(rates, [=](double rate) { return amount / rate; });
      } else {
        fill(rates, [=](double rate) { return amount * rate; });
      }
    });
    return lines;
  }
  constexpr double kDollar[] = {1.0};
  for (std::uint32_t entry = first_[from]; entry != kNone; entry = next_[entry]) {
    fillPairs(kDollar, values_[entry]);
    eachRunWithout(from, [&](std::span<const double> rates) { fillPairs(rates, values_[entry]); });
  }
  return lines;
}

}  // namespace fexora
