// What people type into a search that may be an amount of money.
#pragma once

#include <optional>
#include <string>

#include "programs/shared/Request.h"

namespace fexora::search {

// The conversion that `query` asks for: an amount as amountFromText reads it, the source before or
// after it or right beside, and any destinations, each a code, a sign, a name or a country. Nothing
// when one word of it is none of these, when it has no currency, and when its only one is the
// beginning of a name: a search for something else is left alone.
std::optional<program::Request> requestIn(const std::string& query);

}  // namespace fexora::search
