#include "fexora/platform/text/icu/IcuLocale.h"

#include <cstdint>
#include <set>
#include <string>

#include <unicode/uloc.h>

#include "fexora/platform/base/NoDestructor.h"

namespace fexora {
namespace {

using Languages = std::set<std::string, std::less<>>;

Languages availableLanguages() {
  Languages languages;
  for (std::int32_t i = 0; i < uloc_countAvailable(); ++i) {
    const std::string_view name = uloc_getAvailable(i);
    languages.emplace(name.substr(0, name.find('_')));
  }
  return languages;
}

bool isAvailable(const char* language) {
  static NoDestructor<Languages> languages(availableLanguages());
  return languages->contains(std::string_view(language));
}

}  // namespace

std::optional<icu::Locale> languageLocale(std::string_view name) {
  if (name.empty() || name == "C" || name == "POSIX") return icu::Locale::getUS();
  icu::Locale locale = icu::Locale::createCanonical(std::string(name).c_str());
  if (locale.isBogus() || !isAvailable(locale.getLanguage())) return std::nullopt;
  return locale;
}

icu::Locale numberLocale(std::string_view name) {
  return languageLocale(name).value_or(icu::Locale::getUS());
}

}  // namespace fexora
