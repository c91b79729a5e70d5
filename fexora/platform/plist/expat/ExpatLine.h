// The line that expat has come to, counted from one; newer ones deprecate the call that older ones
// have alone.
#pragma once

#include <cstdint>

#include <expat.h>

namespace fexora {

inline std::uint64_t currentLine(XML_Parser parser) noexcept {
#if XML_MAJOR_VERSION * 100 + XML_MINOR_VERSION >= 209
  return XML_GetCurrentLineNumber64(parser);
#else
  return XML_GetCurrentLineNumber(parser);
#endif
}

}  // namespace fexora
