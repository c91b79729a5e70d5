// Where currencies stand in a catalogue's list: what the rate engine names them by.
//
// Any thread, as CurrencyManager's look-ups. Both may throw std::bad_alloc.
#pragma once

#include <cstdint>
#include <string_view>

#include "fexora/catalogue/CurrencyManager.h"

namespace fexora {

class CataloguePlaces {
 public:
  static constexpr std::uint32_t kNone = CurrencyManager::kNoPlace;

  // `catalogue` outlives this.
  explicit CataloguePlaces(const CurrencyManager& catalogue) noexcept : catalogue_(&catalogue) {}

  // The first record with this code, or kNone.
  std::uint32_t ofCode(std::string_view code) const { return catalogue_->placeOfCode(code); }
  // The same for a record's own code; the catalogue's own records are found without a look-up.
  std::uint32_t of(const Currency& currency) const { return catalogue_->placeOf(currency); }

 private:
  const CurrencyManager* catalogue_;
};

}  // namespace fexora
