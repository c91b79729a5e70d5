#include "fexora/catalogue/MostTraded.h"

#include <algorithm>
#include <iterator>

namespace fexora {
namespace {

// tools/make-signs reads the codes from here.
constexpr std::string_view kMostTraded[] = {
    "USD", "EUR", "JPY", "GBP", "CNY", "AUD", "CAD", "CHF", "HKD", "SGD", "SEK", "KRW",
    "NOK", "NZD", "INR", "MXN", "TWD", "ZAR", "BRL", "DKK", "PLN", "THB", "ILS", "IDR",
    "CZK", "AED", "TRY", "HUF", "CLP", "SAR", "PHP", "MYR", "COP", "RUB", "RON", "PEN",
};

}  // namespace

std::size_t tradedPlace(std::string_view code) noexcept {
  return static_cast<std::size_t>(std::find(std::begin(kMostTraded), std::end(kMostTraded), code) -
                                  std::begin(kMostTraded));
}

}  // namespace fexora
