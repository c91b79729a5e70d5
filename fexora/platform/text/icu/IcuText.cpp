#include "fexora/platform/text/icu/IcuText.h"

#include <unicode/casemap.h>
#include <unicode/normalizer2.h>
#include <unicode/putil.h>
#include <unicode/stringoptions.h>
#include <unicode/ucurr.h>

#include "fexora/platform/base/Environment.h"
#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/text/icu/CharacterBreaks.h"
#include "fexora/platform/text/icu/IcuLocale.h"
#include "fexora/platform/text/icu/IcuNumbers.h"

namespace fexora {
namespace {

constexpr const char* kRootLocale = "";

icu::StringPiece piece(std::string_view text) {
  return {text.data(), static_cast<std::int32_t>(text.size())};
}

bool isIsoForm(std::string_view code) {
  if (code.size() != 3) return false;
  for (const char c : code) {
    if (c < 'A' || c > 'Z') return false;
  }
  return true;
}

}  // namespace

std::string IcuText::lowercased(std::string_view text) {
  std::string out;
  icu::StringByteSink<std::string> sink(&out, static_cast<std::int32_t>(text.size()));
  UErrorCode error = U_ZERO_ERROR;
  icu::CaseMap::utf8ToLower(kRootLocale, 0, piece(text), sink, nullptr, error);
  return U_SUCCESS(error) != 0 ? out : std::string(text);
}

std::string IcuText::canonical(std::string_view text) {
  UErrorCode error = U_ZERO_ERROR;
  const icu::Normalizer2* const nfd = icu::Normalizer2::getNFDInstance(error);
  if (U_FAILURE(error) != 0) return std::string(text);
  std::string out;
  nfd->normalize(icu::UnicodeString::fromUTF8(piece(text)), error).toUTF8String(out);
  return U_SUCCESS(error) != 0 ? out : std::string(text);
}

std::size_t IcuText::characterCount(std::string_view text) {
  std::size_t count = 0;
  CharacterBreaks breaks(text);
  while (breaks.next()) ++count;
  return count;
}

std::vector<std::size_t> IcuText::characterEnds(std::string_view text) {
  std::vector<std::size_t> ends;
  CharacterBreaks breaks(text);
  while (const auto end = breaks.next()) ends.push_back(*end);
  return ends;
}

bool IcuText::contains(std::string_view whole, std::string_view part) {
  if (part.empty()) return false;
  // Canonically equivalent texts break at corresponding places, so the decomposed forms may stand
  // for both.
  const std::string haystack = canonical(whole);
  const std::string needle = canonical(part);
  auto at = haystack.find(needle);
  if (at == std::string::npos) return false;
  const CharacterBreaks breaks(haystack);
  for (; at != std::string::npos; at = haystack.find(needle, at + 1)) {
    if (breaks.isBreak(at) && breaks.isBreak(at + needle.size())) return true;
  }
  return false;
}

std::string IcuText::decimalSeparator(std::string_view locale) {
  return IcuNumbers::forLocale(locale)->decimalSeparator();
}

NumberMarks IcuText::numberMarks(std::string_view locale) {
  return IcuNumbers::forLocale(locale)->marks();
}

std::optional<double> IcuText::parseNumber(std::string_view text, std::string_view locale,
                                           std::optional<int> maximumFractionDigits) {
  return IcuNumbers::forLocale(locale)->parse(text, maximumFractionDigits);
}

std::string IcuText::formatNumber(double value, std::string_view locale, const NumberStyle& style) {
  return IcuNumbers::forLocale(locale)->format(value, style);
}

std::optional<std::string> IcuText::currencyName(std::string_view code, std::string_view locale) {
  const auto language = languageLocale(locale);
  // ICU looks at the first three letters only and would call USDD a US Dollar.
  if (!language || !isIsoForm(code)) return std::nullopt;
  const auto key = icu::UnicodeString::fromUTF8(piece(code));
  UErrorCode error = U_ZERO_ERROR;
  std::int32_t length = 0;
  icu::UnicodeString nullTerminated(key);
  const char16_t* const name =
      ucurr_getName(nullTerminated.getTerminatedBuffer(), language->getName(), UCURR_LONG_NAME,
                    nullptr, &length, &error);
  if (U_FAILURE(error) != 0 || name == nullptr) return std::nullopt;
  const icu::UnicodeString found(false, name, length);
  if (found == key) return std::nullopt;
  std::string out;
  found.toUTF8String(out);
  return out;
}

}  // namespace fexora

fexora::Text* fexora_text_module() {
  // ICU would load its tables from where ICU_DATA says, unless a place is named before first use.
  if (fexora::hasMoreRightsThanItsUser()) u_setDataDirectory("");
  static fexora::NoDestructor<fexora::IcuText> text;
  return &*text;
}
