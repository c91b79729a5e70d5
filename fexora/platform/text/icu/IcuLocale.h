// Which of ICU's locales a name stands for.
//
// ICU answers a name that it does not know with the process's default locale, which it takes from
// the environment once and keeps. Here every locale is named, so that never happens.
#pragma once

#include <optional>
#include <string_view>

#include <unicode/locid.h>

namespace fexora {

// The locale of `name` for numbers; plain English for an empty name, C, POSIX and a language that
// ICU has no data for. Any thread.
icu::Locale numberLocale(std::string_view name);

// The locale of `name` for texts; nothing for a language that ICU has no data for.
std::optional<icu::Locale> languageLocale(std::string_view name);

}  // namespace fexora
