// The keys of the cached data in the store's dictionary and file.
#pragma once

#include <string_view>

namespace fexora {

inline constexpr std::string_view kUDUSDRates = "UDUSDRates";
inline constexpr std::string_view kUDUSDRatesUpdated = "UDUSDRatesUpdated";
inline constexpr std::string_view kUDCurrencies = "UDCurrencies";
inline constexpr std::string_view kUDSourceCurrency = "UDSourceCurrency";
// What the answer said that brought the rates: see RatesAnswer.h.
inline constexpr std::string_view kUDRatesAnswer = "UDRatesAnswer";
// Where rates come from, a word of the programs: see StoreManager::ratesFrom.
inline constexpr std::string_view kUDRatesFrom = "UDRatesFrom";
// Whether the widget draws how rates moved: see StoreManager::todayTrend.
inline constexpr std::string_view kUDTodayTrend = "UDTodayTrend";
// What it lacked of earlier ones: see KeptRates.h.
inline constexpr std::string_view kUDRatesKept = "UDRatesKept";

}  // namespace fexora
