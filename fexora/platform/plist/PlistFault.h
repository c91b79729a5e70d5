// What kept a property list from being read or written.
#pragma once

#include <cstdint>

namespace fexora {

enum class PlistFault : std::uint8_t {
  content,  // what was to be read or written is no property list, or one beyond the limits
  module,   // the module that reads this form is not there: nothing is said about the content
};

}  // namespace fexora
