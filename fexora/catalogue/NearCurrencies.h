// What a text that is no currency may have meant.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/platform/base/Export.h"

namespace fexora {

// At most `limit` currencies, none where nothing is nearly right: those whose code, sign or whole
// name the text is; from two letters on, whose code begins with it; from three on, whose name or a
// word of it does; from four on, a word of a country, and all of these but for one slip of the
// finger; in the order of the ranked search. Where there are none of these: those whose code the
// text is but for two letters that changed places or one too many, and, of the most traded ones,
// but for one that is missing or another. Any thread.
FEXORA_API std::vector<CurrencyRef> nearCurrencies(const CurrencyManager& catalogue,
                                                   std::string_view text, std::size_t limit);

}  // namespace fexora
