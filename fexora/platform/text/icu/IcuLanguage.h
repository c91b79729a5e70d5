// What ICU is asked in one language over and over; finding it anew takes far longer than the
// answer.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <unicode/locdspnm.h>
#include <unicode/locid.h>

namespace fexora {

// Immutable: any thread.
class IcuLanguage {
 public:
  explicit IcuLanguage(const icu::Locale& locale);

  // One for each name, which is kept; null for a language that ICU has no data for. Any thread.
  static std::shared_ptr<const IcuLanguage> named(std::string_view name);

  const icu::Locale& locale() const noexcept { return locale_; }
  // The forms of a noun beside a number, as the CLDR calls them: "one", "other" and so on.
  const std::vector<const char*>& counts() const noexcept { return counts_; }
  // The names of a region, the short one last if it has one; none where ICU knows none.
  std::vector<std::string> regionNames(const std::string& region) const;

 private:
  icu::Locale locale_;
  std::vector<const char*> counts_;
  std::unique_ptr<icu::LocaleDisplayNames> shortNames_;
};

// As IcuLanguage has them, for a language that is asked for one region alone.
std::vector<std::string> regionNamesIn(const icu::Locale& language, const std::string& region);

}  // namespace fexora
