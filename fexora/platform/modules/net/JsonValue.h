// Decodes a JSON text (RFC 8259) into a Value.
//
// Numbers without fraction and exponent that fit 64 bits become integers, all others reals; a
// number too large for a double is infinite and one too small is zero, so that one odd field does
// not cost the whole text. True and false become the integers 1 and 0. Of equal keys the first
// stays. A byte order mark before the text is skipped. Any thread. Nothing throws but for memory
// that cannot be had.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fexora/platform/foundation/Limits.h"
#include "fexora/platform/foundation/Value.h"

namespace fexora {

// A byte order mark cut off.
std::string_view withoutByteOrderMark(std::string_view text) noexcept;

struct JsonResult {
  enum class State : std::uint8_t {
    value,
    notJson,   // a fault in the text, UTF-8 and surrogates included, or nested too deep
    tooLarge,  // more than limits::kJsonValues values
  };

  State state = State::notJson;
  Value root;          // null unless there is a value
  std::string reason;  // for people, unless there is a value
};

// `depth` counts lists and objects one in another.
JsonResult decodeJson(std::string_view text, int depth = limits::kJsonDepth,
                      std::size_t values = limits::kJsonValues);

}  // namespace fexora
