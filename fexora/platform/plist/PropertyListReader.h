// Reads property lists, XML and binary.
//
// Strict, so that whatever is read can be written again and reads the same everywhere: one root, no
// declarations of entities, no text that XML cannot carry, bounded depth and number of objects
// (see Limits.h). Formats: the PropertyList-1.0 document type and "bplist00".
// Any thread. Only std::bad_alloc is thrown.
#pragma once

#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/plist/PlistFault.h"
#include "fexora/platform/values/Value.h"

namespace fexora {

// The root, or one line that says why there is none.
struct PlistResult {
  Value value;
  std::string error;
  PlistFault fault = PlistFault::content;  // when there is an error

  bool ok() const noexcept { return error.empty(); }
};

// The encoding is told by the bytes. Of keys that occur twice in one dictionary the first stays. An
// integer beyond 64 signed bits (up to 64 unsigned ones) becomes a real. Dates keep what the file
// has: whole seconds in XML, fractions in the binary form.
FEXORA_API PlistResult readPropertyList(std::string_view bytes);

}  // namespace fexora
