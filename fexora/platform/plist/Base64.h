// Bytes as base64 text and back (RFC 4648, section 4), as the data of an XML property list is kept.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/values/Value.h"

namespace fexora {

// Appends to `out`, in one line, padded.
void appendBase64(std::string& out, const Data& bytes);

// White space may stand anywhere. Nothing for a foreign character and for a length or padding that
// does not come out.
std::optional<Data> parseBase64(std::string_view text);

}  // namespace fexora
