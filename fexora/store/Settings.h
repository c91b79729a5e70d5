// The eight settings of the application and its widget, and their form in the store's dictionary.
//
// The library keeps them and uses none of them itself.
#pragma once

#include <cstdint>
#include <vector>

#include "fexora/catalogue/Currency.h"
#include "fexora/platform/values/Value.h"

namespace fexora {

enum class StyleMode : std::int64_t { light = 0, dark = 1 };
enum class Naming : std::int64_t { names = 0, codes = 1 };
enum class TodayConversionMode : std::int64_t { linear = 0, rate = 1 };

struct FEXORA_API Settings {
  static constexpr std::int64_t kDefaultFraction = 3;
  static constexpr std::int64_t kDefaultNumberOfCurrencies = 10;
  // What programs offer a person, from 1 on: 0 would read back as the default. Nothing here holds
  // to it.
  static constexpr std::int64_t kMostFraction = 15;
  static constexpr std::int64_t kMostNumberOfCurrencies = 100'000;

  // Made with the code "USD". Out of memory, one that lives for ever, so that there always is one.
  static CurrencyRef defaultRelativeCurrency();

  std::int64_t fraction = kDefaultFraction;
  StyleMode mode = StyleMode::light;
  bool seporate = true;
  Naming namingInWidget = Naming::names;
  std::int64_t numberOfCurrenciesInWidget = kDefaultNumberOfCurrencies;
  std::vector<CurrencyRef> todayCurrencies;
  TodayConversionMode todayConversionMode = TodayConversionMode::linear;
  CurrencyRef todayRelativeCurrency = defaultRelativeCurrency();  // never null

  // Both may throw std::bad_alloc.
  //
  // A value that is missing or of another kind gives the default, and so does a number of 0 for
  // `fraction` and `numberOfCurrenciesInWidget`. An integer setting takes an integer only,
  // `seporate` a boolean only.
  static Settings from(const Dictionary& content);
  // Sets all eight keys.
  void putInto(Dictionary& content) const;
};

}  // namespace fexora
