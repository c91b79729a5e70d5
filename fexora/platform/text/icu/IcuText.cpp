#include "fexora/platform/text/icu/IcuText.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

#include <unicode/casemap.h>
#include <unicode/normalizer2.h>
#include <unicode/putil.h>
#include <unicode/stringoptions.h>
#include <unicode/uchar.h>
#include <unicode/ucurr.h>

#include "fexora/platform/base/Environment.h"
#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/text/icu/CharacterBreaks.h"
#include "fexora/platform/text/icu/IcuLanguage.h"
#include "fexora/platform/text/icu/IcuLocale.h"
#include "fexora/platform/text/icu/IcuNumbers.h"

namespace fexora {
namespace {

constexpr const char* kRootLocale = "";

icu::StringPiece piece(std::string_view text) {
  return {text.data(), static_cast<std::int32_t>(text.size())};
}

// Whether it is as many capital letters.
bool isIsoForm(std::string_view code, std::size_t letters) {
  if (code.size() != letters) return false;
  for (const char c : code) {
    if (c < 'A' || c > 'Z') return false;
  }
  return true;
}

// The Latin letters that are no plain one with a mark, in lower case.
struct Spelling {
  UChar32 letter;
  const char16_t* plain;
};
constexpr Spelling kSpellings[] = {{0x00E6, u"ae"}, {0x00F0, u"d"}, {0x00F8, u"o"}, {0x00FE, u"th"},
                                   {0x0111, u"d"},  {0x0127, u"h"}, {0x0131, u"i"}, {0x0142, u"l"},
                                   {0x0153, u"oe"}, {0x0167, u"t"}};

// Canonical combining classes: accents have that of their place, or of their script.
constexpr std::uint8_t kKanaVoicing = 8;
constexpr std::uint8_t kVirama = 9;

bool isAccent(UChar32 letter) {
  const std::uint8_t kind = u_getCombiningClass(letter);
  return kind != 0 && kind != kKanaVoicing && kind != kVirama;
}

void appendBare(icu::UnicodeString& out, UChar32 letter) {
  if (isAccent(letter)) return;
  for (const auto& [special, plain] : kSpellings) {
    if (letter == special) {
      out.append(plain, -1);
      return;
    }
  }
  out.append(letter);
}

// Marks on one letter, which each normal form puts in order by swapping them: the work is quadratic
// in a run of them. No writing has so many (Unicode Standard Annex 15, "Stream-Safe Text Format").
constexpr int kMarksOfALetter = 30;
constexpr UChar32 kGraphemeJoiner = 0x034F;  // parts marks that would change places

// Asked of ICU once, which keeps them for the process; each null where it has none.
struct NormalForms {
  NormalForms() noexcept {
    UErrorCode error = U_ZERO_ERROR;
    fold = icu::Normalizer2::getNFKCCasefoldInstance(error);
    decompose = icu::Normalizer2::getNFDInstance(error);
    compose = icu::Normalizer2::getNFCInstance(error);
  }
  bool areThere() const { return fold != nullptr && decompose != nullptr && compose != nullptr; }

  const icu::Normalizer2* fold = nullptr;
  const icu::Normalizer2* decompose = nullptr;
  const icu::Normalizer2* compose = nullptr;
};

const NormalForms& normalForms() {
  static const NormalForms forms;
  return forms;
}

enum class Rest { parted, dropped };

// A text whose runs of what `form` may join to a letter before are no longer than that; what comes
// after is parted from it, or dropped.
icu::UnicodeString inShortRuns(std::string_view text, const icu::Normalizer2& form, Rest rest) {
  auto whole = icu::UnicodeString::fromUTF8(piece(text));
  if (whole.length() <= kMarksOfALetter) return whole;
  icu::UnicodeString out;
  int run = 0;
  for (std::int32_t at = 0; at < whole.length(); at = whole.moveIndex32(at, 1)) {
    const UChar32 letter = whole.char32At(at);
    run = form.hasBoundaryBefore(letter) != 0 ? 0 : run + 1;
    if (run > kMarksOfALetter) {
      if (rest == Rest::dropped) continue;
      out.append(kGraphemeJoiner);
      run = 1;
    }
    out.append(letter);
  }
  return out;
}

// The language of most people in a region.
std::optional<icu::Locale> regionLanguage(const std::string& region) {
  icu::Locale locale("und", region.c_str());
  UErrorCode error = U_ZERO_ERROR;
  locale.addLikelySubtags(error);
  return U_SUCCESS(error) != 0 ? languageLocale(locale.getName()) : std::nullopt;
}

}  // namespace

std::string IcuText::lowercased(std::string_view text) {
  std::string out;
  icu::StringByteSink<std::string> sink(&out, static_cast<std::int32_t>(text.size()));
  UErrorCode error = U_ZERO_ERROR;
  icu::CaseMap::utf8ToLower(kRootLocale, 0, piece(text), sink, nullptr, error);
  return U_SUCCESS(error) != 0 ? out : std::string(text);
}

std::string IcuText::folded(std::string_view text) {
  const NormalForms& forms = normalForms();
  if (!forms.areThere()) return lowercased(text);
  UErrorCode error = U_ZERO_ERROR;
  const auto plain = inShortRuns(text, *forms.fold, Rest::dropped);
  const icu::UnicodeString marked =
      forms.decompose->normalize(forms.fold->normalize(plain, error), error);
  icu::UnicodeString bare;
  for (std::int32_t at = 0; at < marked.length(); at = marked.moveIndex32(at, 1)) {
    appendBare(bare, marked.char32At(at));
  }
  std::string out;
  forms.compose->normalize(bare, error).toUTF8String(out);
  return U_SUCCESS(error) != 0 ? out : lowercased(text);
}

std::string IcuText::canonical(std::string_view text) {
  const icu::Normalizer2* const nfd = normalForms().decompose;
  if (nfd == nullptr) return std::string(text);
  UErrorCode error = U_ZERO_ERROR;
  std::string out;
  nfd->normalize(inShortRuns(text, *nfd, Rest::parted), error).toUTF8String(out);
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
  return IcuNumbers::decimalSeparator(locale);
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
  if (!language || !isIsoForm(code, 3)) return std::nullopt;
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

std::vector<std::string> IcuText::currencyPlurals(std::string_view code, std::string_view locale) {
  const auto language = IcuLanguage::named(locale);
  std::vector<std::string> names;
  if (language == nullptr || !isIsoForm(code, 3)) return names;
  auto key = icu::UnicodeString::fromUTF8(piece(code));
  for (const char* const count : language->counts()) {
    UErrorCode error = U_ZERO_ERROR;
    UBool isChoice = 0;
    std::int32_t length = 0;
    const char16_t* const name = ucurr_getPluralName(
        key.getTerminatedBuffer(), language->locale().getName(), &isChoice, count, &length, &error);
    const icu::UnicodeString found(false, name, U_SUCCESS(error) != 0 ? length : 0);
    std::string text;
    if (found == key || found.toUTF8String(text).empty()) continue;
    if (std::find(names.begin(), names.end(), text) == names.end()) names.push_back(text);
  }
  return names;
}

std::vector<NumberWord> IcuText::numberWords(std::string_view locale) {
  return IcuNumbers::forLocale(locale)->words();
}

std::vector<std::string> IcuText::regionNames(std::string_view region, std::string_view locale) {
  if (!isIsoForm(region, 2)) return {};
  const std::string code(region);
  if (locale.empty()) {
    const auto language = regionLanguage(code);
    return language ? regionNamesIn(*language, code) : std::vector<std::string>();
  }
  const auto language = IcuLanguage::named(locale);
  return language != nullptr ? language->regionNames(code) : std::vector<std::string>();
}

std::vector<std::string> IcuText::locales() {
  std::int32_t count = 0;
  const icu::Locale* const locales = icu::Locale::getAvailableLocales(count);
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(count));
  for (std::int32_t i = 0; i < count; ++i) names.emplace_back(locales[i].getName());
  return names;
}

}  // namespace fexora

fexora::Text* fexora_text_module() {
  // ICU would load its tables from where ICU_DATA says, unless a place is named before first use.
  if (fexora::hasMoreRightsThanItsUser()) u_setDataDirectory("");
  static fexora::NoDestructor<fexora::IcuText> text;
  return &*text;
}
