// Which currencies a sign stands for: "€" for one, "$" for thirty.
//
// The signs are those that Unicode CLDR writes for the catalogue's currencies in any language
// (symbol, narrow, formal and variant), and those of resources/currency-facts.tsv, without
// directional marks and with U+0020 for every blank in them. None is a code of the catalogue, case
// counting. Case counts in a sign, too. Any thread; nothing is opened for it.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "fexora/platform/base/Export.h"

namespace fexora {

// The currencies that write `sign`, the most traded first (by the Triennial Central Bank Survey of
// the Bank for International Settlements, 2022; those beyond its list by code, withdrawn ones
// last); empty when none does. The codes live as long as the process.
FEXORA_API std::vector<std::string_view> codesOfSign(std::string_view sign);

// The currency of the region that a locale's name ("de_CH", "zh-Hant-TW") ends in; of the likely
// region of its language where it names none. Nothing for C, POSIX, an empty name, and what is no
// single country ("es_419").
FEXORA_API std::optional<std::string_view> currencyOfLocale(std::string_view locale);

// One currency of those that write a sign.
struct SignReading {
  // Why it is this one.
  enum class Why {
    only,    // no other writes the sign
    region,  // it is the one of the locale's region
    trade,   // it is the most traded one, the region's being none of them
  };
  std::string_view code;
  Why why = Why::only;
};
// Nothing for a text that is no sign.
FEXORA_API std::optional<SignReading> readSign(std::string_view sign, std::string_view locale);

}  // namespace fexora
