// Host strings from a gettext domain: the compiled catalogue
// <folder>/<language>/LC_MESSAGES/<domain>.mo, with currency codes as message ids.
//
// The catalogue is read here and not through dcgettext(), which speaks only the languages of the
// system's installed locales, takes the language from the process's environment, and so can neither
// be given one nor be changed beside other threads. The file's form is the one of the GNU gettext
// manual, "The Format of GNU MO Files", revision 0, in either byte order; its texts are UTF-8.
#pragma once

#include <string>
#include <string_view>

#include "fexora/platform/foundation/StringTable.h"

namespace fexora {

// The catalogue's messages (of a plural, the singular; those with a context are left out). Refuses
// more than limits::kStringsFileBytes of text, however small the file.
FEXORA_API StringTableResult parseGettextCatalogue(std::string_view bytes);

class FEXORA_API GettextStrings final : public TableStrings {
 public:
  GettextStrings(std::string folder, std::string domain);

  // Takes over the strings of a language like "de_AT" or, failing that, "de". True also where the
  // domain has none for it: then there are no strings, and `error` is empty. False with a reason,
  // and no strings, when the catalogue cannot be used. Any thread.
  bool setLanguage(std::string_view language, std::string& error);

 private:
  const std::string folder_;
  const std::string domain_;
};

}  // namespace fexora
