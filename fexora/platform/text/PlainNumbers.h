// Numbers in the plain form of Locale::hasPlainNumbers, without any locale data: a point before the
// fraction and groups of three digits.
// Accepts and writes exactly what ICU's strict decimal format does for English. Any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/text/Text.h"

namespace fexora {

// The number that the whole ASCII text denotes: digits with an optional minus before them, a point,
// and an exponent after "E" or "e"; the whole part may be grouped in threes by one kind of mark
// (comma, apostrophe or blank). See Text::parseNumber.
std::optional<double> parsePlainNumber(std::string_view text,
                                       std::optional<int> maximumFractionDigits);

// See Text::formatNumber.
FEXORA_API std::string formatPlainNumber(double value, const NumberStyle& style);

}  // namespace fexora
