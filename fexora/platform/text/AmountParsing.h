// Typed amounts: text to number in the current locale. The text constructors of NSNumber read by
// these rules, too.
//
// Where the locale's decimal mark is the point or the comma, both serve as decimal mark: before
// parsing, every "," becomes "." or, where the mark is a comma, every "." becomes ",". So neither
// can group digits, and a text with both is no number (1,234.5). Where the mark is another sign (as
// in Arabic), "," becomes "." all the same, and only the locale's own mark starts a fraction.
// The marks of other scripts stay as they are, and may be read for a mark between groups there:
// U+066B, which never is one, makes 1234 of "١٫٢٣٤" in English. readAmount() rejects those.
// Beyond that a number is what the locale's decimal style reads from the first to the last sign of
// the text: Text::parseNumber.
#pragma once

#include <optional>
#include <string_view>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/text/Text.h"

namespace fexora {

// The number that `text` denotes in Locale::current(); nothing when it denotes none, the empty text
// included (which NSNumber takes for 0.0). `maxFractionDigints` bounds the digits kept after the
// mark (half to even; below 0 is 0). Any thread.
FEXORA_API std::optional<double> parseAmount(std::string_view text,
                                             std::optional<int> maxFractionDigints = {},
                                             Text& rules = Text::process());

// The same in the locale named, with all its digits.
FEXORA_API std::optional<double> parseAmountIn(std::string_view locale, std::string_view text,
                                               Text& rules = Text::process());

}  // namespace fexora
