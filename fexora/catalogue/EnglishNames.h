// The English name of every currency in the catalogue's table. Where the Unicode CLDR has a name
// for the code, it is the same one.
#pragma once

#include <optional>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

// Any thread.
FEXORA_API std::optional<std::string_view> englishName(std::string_view code) noexcept;

// One line for each, in the order of their codes: code, tab, name; a line end before the first.
// Made by tools/make-names from fexora/resources/currencies.tsv.
extern const std::string_view kEnglishNames;

}  // namespace fexora
