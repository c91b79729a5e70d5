// What a text that is no currency may have meant.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/platform/base/Export.h"

namespace fexora {

// At most `limit` currencies: the first ones that the ranked search finds, else those whose code
// the text is but for one slip of the finger, the most traded first. Any thread.
FEXORA_API std::vector<CurrencyRef> nearCurrencies(const CurrencyManager& catalogue,
                                                   std::string_view text, std::size_t limit);

}  // namespace fexora
