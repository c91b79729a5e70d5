// Which locale numbers are read and written in.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

class FEXORA_API Locale {
 public:
  // The current locale's name, like "de_DE", "ar_EG" or "C": what the host set, else the first of
  // the environment's LC_ALL, LC_NUMERIC and LANG that is not empty, without its ".UTF-8" or
  // "@modifier"; "C" when none says. Read anew at each call. Any thread, as far as the
  // environment is not changed meanwhile.
  static std::string current();

  // An empty name returns to the environment. Any thread.
  static void setCurrent(std::string_view name);
  // How often that was called: tells a change that has been taken back since. Any thread.
  static std::uint64_t changes() noexcept;

  // The language that texts are shown in, by the same rule from LC_ALL, LC_MESSAGES and LANG
  // unless the host set a locale.
  static std::string currentLanguage();

  // Whether numbers of this locale are plain ASCII with a point as decimal mark and a comma
  // between groups of three: C, POSIX and every English one that keeps that form.
  static bool hasPlainNumbers(std::string_view name) noexcept;
};

}  // namespace fexora
