#include "c/DollarRates.h"

#include <cmath>
#include <string>
#include <unordered_set>
#include <utility>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/rates/BundledRates.h"
#include "fexora/rates/Successors.h"

namespace fexora::c {
namespace {

// Without the rates that law fixes by those of others in the list: whoever publishes them rounds.
std::vector<USDRateRef> withoutFixed(std::vector<USDRateRef> rates) {
  std::unordered_set<std::string> given;
  for (const USDRateRef& rate : rates) {
    if (rate != nullptr) given.insert(rate->code());
  }
  std::erase_if(rates, [&](const USDRateRef& rate) {
    const CurrencyFacts* facts = rate != nullptr ? currencyFacts(rate->code()) : nullptr;
    return facts != nullptr && facts->hasRatio() && given.contains(std::string(facts->successor));
  });
  return rates;
}

}  // namespace

DollarRates::DollarRates(std::vector<USDRateRef> rates, double published)
    : units_(Codes::all().size(), 0.0), published_(published) {
  const Codes& codes = Codes::all();
  const auto put = [&](std::string_view code, double units) {
    const std::uint32_t place = codes.place(code);
    if (place == Codes::kNone || has(place) || !(units > 0) || !std::isfinite(units)) return;
    units_[place] = units;
  };
  if (!rates.empty()) put("USD", 1.0);
  for (const USDRateRef& rate : withSuccessors(withoutFixed(std::move(rates)))) {
    if (rate != nullptr) put(rate->code(), rate->rate().doubleValue());
  }
}

const std::shared_ptr<const DollarRates>& DollarRates::bundled() {
  static const NoDestructor<std::shared_ptr<const DollarRates>> rates(
      std::make_shared<const DollarRates>(bundledUSDRates(), bundledRatesDay().secondsSince1970()));
  return *rates;
}

bool DollarRates::pair(std::uint32_t from, std::uint32_t to, Pair& found) const {
  const double source = units_[from];
  const double destination = units_[to];
  if (!(source > 0) || !(destination > 0)) return false;
  found = {from == to ? 1.0 : destination / source, published_};
  return true;
}

std::vector<const char*> DollarRates::codes() const {
  std::vector<const char*> codes;
  for (std::uint32_t place = 0; place < units_.size(); ++place) {
    if (has(place)) codes.push_back(Codes::all()[place]);
  }
  return codes;
}

SessionRates::SessionRates(const StoreManager& store, double published) {
  tables_.push_back(std::make_shared<const DollarRates>(
      store.loadUSDRates().value_or(std::vector<USDRateRef>()), published));
  std::vector<RatesTable> kept = keptTables(store.ud());
  const std::size_t before = 1 + rankBeforeBundle(kept);
  for (RatesTable& table : kept) {
    const double day = table.published ? table.published->secondsSince1970() : std::nan("");
    tables_.push_back(std::make_shared<const DollarRates>(std::move(table.rates), day));
  }
  tables_.insert(tables_.begin() + static_cast<std::ptrdiff_t>(before), DollarRates::bundled());
}

Outcome SessionRates::pair(std::uint32_t from, std::uint32_t to, DollarRates::Pair& found) const {
  for (const auto& table : tables_) {
    if (table->pair(from, to, found)) return {};
  }
  if (from == to) {
    found = {1.0, std::nan("")};
    return {};
  }
  return {FEXORA_NO_RATE,
          std::string("there is no rate of ") + Codes::all()[from] + " in " + Codes::all()[to]};
}

}  // namespace fexora::c
