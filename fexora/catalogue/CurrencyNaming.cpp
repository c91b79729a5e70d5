#include "fexora/catalogue/CurrencyNaming.h"

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/catalogue/RankingKeys.h"

namespace fexora {

CurrencyNaming::CurrencyNaming(const CurrencyManager& catalogue, Text& text,
                               std::string_view locale)
    : catalogue_(catalogue), text_(text), locale_(locale), keys_(catalogue.rankingKeys()) {}

std::optional<NamedCurrency> CurrencyNaming::find(std::string_view name) const {
  using Why = SignReading::Why;
  const WholeName* const whole = keys_->named(text_, name);
  if (whole == nullptr) return std::nullopt;
  const auto& all = catalogue_.currencies();
  const NamedCurrency first{all[whole->places.front()], whole->kind, Why::only};
  if (whole->places.size() == 1) return first;
  const auto local = currencyOfLocale(locale_);
  for (const std::uint32_t place : whole->places) {
    if (local && all[place]->code() == *local)
      return NamedCurrency{all[place], whole->kind, Why::region};
  }
  return NamedCurrency{first.currency, whole->kind, Why::trade};
}

bool CurrencyNaming::mayGoOn(std::string_view text) const {
  return keys_->mayGoOn(text_, text);
}

}  // namespace fexora
