// Host strings from a file of the form
//   /* comment */  "key" = "text";  // comment
//
// UTF-8, or UTF-16 with a byte-order mark. A key or a text is quoted ("…" or '…'), or a bare word
// of letters, digits and _ . / $ : -. A key without a text stands for itself. In quotes a backslash
// starts an escape: \a \b \f \n \r \t \v, \Uhhhh or \uhhhh (one UTF-16 unit of four hex digits; two
// for a code point beyond U+FFFF), one to three octal digits (ASCII only), and any other sign for
// itself. The last of several entries with one key stands.
#pragma once

#include <string>
#include <string_view>

#include "fexora/platform/foundation/StringTable.h"

namespace fexora {

// An error names the line ("line 3: ';' expected").
FEXORA_API StringTableResult parseStringsFile(std::string_view bytes);

class FEXORA_API StringsFile final : public TableStrings {
 public:
  // Reads the file and takes its strings over. A file that cannot be used leaves what was there and
  // gives false with a reason that names it. Any thread.
  bool load(const std::string& path, std::string& error);
};

}  // namespace fexora
