// Names of currencies and countries that people use and the Unicode CLDR does not have. Any thread.
#pragma once

#include <span>
#include <string_view>

#include "fexora/platform/text/WordList.h"

namespace fexora {

struct PopularName {
  std::string_view name;  // as nameWords() gives it
  WordList codes;         // of several the most traded first
};
std::span<const PopularName> popularNames() noexcept;

// Further names of a country or territory (ISO 3166).
struct EverydayName {
  std::string_view region, name;
};
std::span<const EverydayName> everydayNames() noexcept;

}  // namespace fexora
