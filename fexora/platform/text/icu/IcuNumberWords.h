// The words with which a locale shortens numbers, out of the Unicode CLDR's compact forms.
#pragma once

#include <vector>

#include <unicode/locid.h>

#include "fexora/platform/text/Text.h"

namespace fexora {

// See Text::numberWords. Takes some hundred microseconds: for whoever keeps the answer. Any thread.
std::vector<NumberWord> shortNumberWords(const icu::Locale& locale);

}  // namespace fexora
