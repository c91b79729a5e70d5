#include "fexora/platform/text/icu/IcuLanguage.h"

#include <optional>
#include <utility>

#include <unicode/plurrule.h>

#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/text/icu/IcuLocale.h"
#include "fexora/platform/text/icu/KeptByName.h"

namespace fexora {
namespace {

std::unique_ptr<icu::LocaleDisplayNames> shortNamesIn(const icu::Locale& locale) {
  UDisplayContext length = UDISPCTX_LENGTH_SHORT;
  return std::unique_ptr<icu::LocaleDisplayNames>(
      icu::LocaleDisplayNames::createInstance(locale, &length, 1));
}

// Some languages have names for "one" without rules that say when.
std::vector<const char*> countsIn(const icu::Locale& locale) {
  UErrorCode error = U_ZERO_ERROR;
  const std::unique_ptr<icu::PluralRules> rules(icu::PluralRules::forLocale(locale, error));
  std::vector<const char*> counts{"one", "other"};
  for (const char* count : {"two", "few", "many", "zero"}) {
    if (rules == nullptr || rules->isKeyword(count) != 0) counts.push_back(count);
  }
  return counts;
}

std::vector<std::string> namesOf(const std::string& region, const icu::Locale& language,
                                 const icu::LocaleDisplayNames* shortNames) {
  icu::UnicodeString found;
  std::string whole;
  icu::Locale("und", region.c_str()).getDisplayCountry(language, found).toUTF8String(whole);
  // What it has no name for it calls by the code.
  if (whole.empty() || whole == region) return {};
  std::vector<std::string> names{std::move(whole)};
  if (shortNames == nullptr) return names;
  std::string shorter;
  shortNames->regionDisplayName(region.c_str(), found).toUTF8String(shorter);
  if (shorter != names[0]) names.push_back(std::move(shorter));
  return names;
}

}  // namespace

IcuLanguage::IcuLanguage(const icu::Locale& locale)
    : locale_(locale), counts_(countsIn(locale)), shortNames_(shortNamesIn(locale)) {}

std::shared_ptr<const IcuLanguage> IcuLanguage::named(std::string_view name) {
  static NoDestructor<KeptByName<IcuLanguage>> kept;
  return kept->get(name, [&] {
    const auto locale = languageLocale(name);
    return locale ? std::make_shared<const IcuLanguage>(*locale) : nullptr;
  });
}

std::vector<std::string> IcuLanguage::regionNames(const std::string& region) const {
  return namesOf(region, locale_, shortNames_.get());
}

std::vector<std::string> regionNamesIn(const icu::Locale& language, const std::string& region) {
  return namesOf(region, language, shortNamesIn(language).get());
}

}  // namespace fexora
