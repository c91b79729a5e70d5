// Addresses as messages, logs and JSON may have them.
#pragma once

#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

// An address, or a text with addresses in it, without user, secret and query, which often is a key:
// three asterisks stand for each. What stands between the first "://" (the beginning, where there
// is none) and the last "@" is hidden, so that no sign within a secret can end it early. An "@"
// that begins a part of a path behind a host alone is none of a user's
// ("https://host/npm/@owner/x"). A question mark anywhere hides what follows up to the next blank.
FEXORA_API std::string shownAddress(std::string_view text);

}  // namespace fexora
