// Writes property lists as XML.
//
// The layout is fixed, one line an element, tabs for depth, keys in byte order:
//
//   <?xml version="1.0" encoding="UTF-8"?>
//   <!DOCTYPE plist ...>
//   <plist version="1.0">
//   <dict>
//   <TAB><key>Fraction</key>
//   <TAB><integer>2</integer>
//   </dict>
//   </plist>
//
// What is written reads back the same bit for bit, but for dates, which keep whole seconds (cut
// towards the past), and the sign and payload of a not-a-number. Reals are in their shortest form,
// "inf", "-inf" and "nan" included.
// Any thread. Only std::bad_alloc is thrown.
#pragma once

#include <string>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/plist/PlistFault.h"
#include "fexora/platform/values/Value.h"

namespace fexora {

// The whole file, or one line that says where in the value and why there is none.
struct PlistBytes {
  std::string bytes;
  std::string error;
  PlistFault fault = PlistFault::content;  // when there is an error

  bool ok() const noexcept { return error.empty(); }
};

// Fails for what a strict reader would reject: null values, text that XML cannot carry (see
// PlistText.h), dates outside the years 1 to 9999, too deep a nesting, too many objects and more
// bytes than are read from a file (see Limits.h).
FEXORA_API PlistBytes writePropertyList(const Value& root);

}  // namespace fexora
