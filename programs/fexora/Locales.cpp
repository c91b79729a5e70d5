#include "programs/fexora/Locales.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "fexora/fexora.h"

#include "programs/shared/EditDistance.h"
#include "programs/shared/Failure.h"

namespace fexora::program {
namespace {

constexpr std::size_t kOffered = 3;
constexpr std::size_t kMostSlips = 2;
// Longer ones are no names of locales.
constexpr std::size_t kLongest = 32;

std::string_view languageOf(std::string_view name) {
  return name.substr(0, name.find_first_of("_-.@"));
}

std::string near(const std::string& name, const std::vector<std::string>& locales) {
  std::string text;
  std::size_t offered = 0;
  for (std::size_t slips = 1; slips <= kMostSlips; ++slips) {
    for (const std::string& locale : locales) {
      if (name.size() > kLongest || offered == kOffered || editDistance(name, locale) != slips) {
        continue;
      }
      text += (offered++ == 0 ? "; near: " : ", ") + locale;
    }
  }
  return text;
}

}  // namespace

void requireLocale(const char* option, const std::string& name) {
  if (name.empty() || Locale::hasPlainNumbers(name)) return;
  const auto locales = Text::process().locales();
  const auto knows = [&](const std::string& locale) {
    return languageOf(locale) == languageOf(name);
  };
  // Without any language data everything is shown in plain English, whatever was asked for.
  if (locales.empty() || std::any_of(locales.begin(), locales.end(), knows)) return;
  throw usageFailure(std::string(option) + ": nobody knows the locale \"" + name +
                     "\"; expected one like de_DE" + near(name, locales));
}

}  // namespace fexora::program
