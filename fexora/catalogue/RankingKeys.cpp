#include "fexora/catalogue/RankingKeys.h"

#include <algorithm>
#include <bit>
#include <map>
#include <utility>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/catalogue/CurrencySigns.h"
#include "fexora/catalogue/EnglishNames.h"
#include "fexora/catalogue/NameWords.h"
#include "fexora/catalogue/OneSlip.h"
#include "fexora/catalogue/PopularNames.h"
#include "fexora/platform/text/WordList.h"

namespace fexora {
namespace {

constexpr std::size_t kMostWords = 8;  // as many bits as Fit has
constexpr std::size_t kSlipLetters = 4;

std::string_view trimmed(std::string_view text) noexcept {
  const auto start = text.find_first_not_of(" \t\r\n");
  if (start == std::string_view::npos) return {};
  return text.substr(start, text.find_last_not_of(" \t\r\n") - start + 1);
}

std::size_t letterCount(std::string_view text) noexcept {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80;
  }));
}

std::vector<std::string> codesOf(const std::vector<CurrencyRef>& currencies) {
  std::vector<std::string> codes;
  codes.reserve(currencies.size());
  for (const CurrencyRef& currency : currencies) codes.push_back(currency->code());
  return codes;
}

void improve(Match& best, Match found) noexcept {
  best = std::min(best, found);
}

}  // namespace

RankingKeys::RankingKeys(const std::vector<CurrencyRef>& currencies, HostStrings& strings,
                         Text& text, Version version)
    : version_(std::move(version)), whole_(codesOf(currencies)) {
  Regions regions;
  for (const CurrencyRef& currency : currencies) {
    const std::string& code = currency->code();
    const auto place = static_cast<std::uint32_t>(codes_.size());
    codes_.push_back(text.folded(code));
    addName(text, localizedString(strings, code), false, {place});
    if (const auto english = englishName(code)) addName(text, *english, false, {place});
    addFacts(text, code, place, regions);
  }
  addRegions(text, regions);
  makeWords();
  addWholeNames(currencies, strings, text);
}

void RankingKeys::addWholeNames(const std::vector<CurrencyRef>& currencies, HostStrings& strings,
                                Text& text) {
  WholeNames::Names own;
  WholeNames::Names english;
  for (std::uint32_t place = 0; place < currencies.size(); ++place) {
    const std::string& code = currencies[place]->code();
    const auto add = [&](WholeNames::Names& names, std::string_view name) {
      names.emplace_back(nameWords(text.folded(name)), place);
    };
    add(own, localizedString(strings, code));
    for (const auto& name : text.currencyPlurals(code, version_.language)) add(own, name);
    const auto name = englishName(code);
    if (!name) continue;
    add(english, *name);
    const auto plurals = text.currencyPlurals(code, "en");
    for (const auto& plural : plurals) add(english, plural);
    if (plurals.empty()) add(english, std::string(*name) + "s");
  }
  whole_.addLanguage(own);
  whole_.addLanguage(english);
  for (const auto& [name, codes] : popularNames()) {
    for (const std::string_view code : codes) {
      for (std::uint32_t place = 0; place < currencies.size(); ++place) {
        if (currencies[place]->code() == code) whole_.add(name, NameKind::popular, place);
      }
    }
  }
  whole_.complete();
}

void RankingKeys::addFacts(Text& text, std::string_view code, std::uint32_t place,
                           Regions& regions) {
  const CurrencyFacts* const facts = currencyFacts(code);
  if (facts == nullptr) return;
  for (const std::string_view sign : facts->signs) signs_.push_back({text.folded(sign), place});
  for (const std::string_view region : facts->regions) {
    regions[std::string(region)].push_back(place);
  }
}

void RankingKeys::addRegions(Text& text, const Regions& regions) {
  // An empty language is the region's own.
  const std::string_view languages[] = {version_.language, "en", ""};
  for (const auto& [region, places] : regions) {
    for (const std::string_view language : languages) {
      for (const std::string& name : text.regionNames(region, language)) {
        addCountry(text, name, region, places);
      }
    }
    for (const auto& [of, name] : everydayNames()) {
      if (of == region) addCountry(text, name, region, places);
    }
  }
}

// The whole name is that of the country's own currency, the beginning of any that is used there.
void RankingKeys::addCountry(Text& text, std::string_view name, std::string_view region,
                             const std::vector<std::uint32_t>& places) {
  addName(text, name, true, places);
  const auto own = currencyOfLocale("und_" + std::string(region));
  const std::string words = nameWords(text.folded(name));
  bool isOwn = false;
  for (const std::uint32_t place : places) {
    if (!own || codes_[place] != text.folded(*own)) continue;
    whole_.add(words, NameKind::country, place);
    isOwn = true;
  }
  if (isOwn) return;
  for (const std::uint32_t place : places) whole_.add(words, NameKind::country, place);
}

void RankingKeys::addName(Text& text, std::string_view name, bool isCountry,
                          const std::vector<std::uint32_t>& places) {
  std::string words = nameWords(text.folded(name));
  // The names of one currency or country come in a row.
  for (auto last = names_.rbegin(); last != names_.rend() && last->places == places; ++last) {
    if (last->text == words) return;
  }
  if (!words.empty()) names_.push_back({std::move(words), isCountry, places});
}

void RankingKeys::makeWords() {
  std::map<std::string_view, std::vector<std::uint32_t>> words;
  for (std::uint32_t i = 0; i < names_.size(); ++i) {
    for (const std::string_view word : WordList(names_[i].text)) words[word].push_back(i);
  }
  words_.reserve(words.size());
  for (auto& [word, names] : words) words_.push_back({std::string(word), std::move(names)});
}

std::vector<Match> RankingKeys::matches(Text& text, std::string_view typed) const {
  std::vector<Match> best(codes_.size(), Match::none);
  const std::string folded = text.folded(trimmed(typed));
  const std::string words = nameWords(folded);
  if (!folded.empty()) matchCodes(folded, best);
  if (const WholeName* const whole = whole_.find(words)) {
    const bool isCountry = whole->kind == NameKind::country;
    for (const std::uint32_t place : whole->places) {
      improve(best[place], isCountry ? Match::wholeCountry : Match::wholeName);
    }
  }
  if (!words.empty()) {
    matchNames(words, best);
    matchWords(words, best);
  }
  return best;
}

const WholeName* RankingKeys::named(Text& text, std::string_view typed) const {
  return whole_.find(nameWords(text.folded(typed)));
}

bool RankingKeys::mayGoOn(Text& text, std::string_view typed) const {
  return whole_.goesOnAfter(nameWords(text.folded(typed)));
}

void RankingKeys::matchCodes(std::string_view folded, std::vector<Match>& best) const {
  const bool slips = letterCount(folded) >= kSlipLetters;
  for (std::size_t place = 0; place < codes_.size(); ++place) {
    const std::string_view code = codes_[place];
    const auto at = code.find(folded);
    if (at == 0) {
      improve(best[place], code == folded ? Match::code : Match::codeStart);
    } else if (at != std::string_view::npos) {
      improve(best[place], Match::inside);
    } else if (slips && beginsButForOneSlip(code, folded)) {
      improve(best[place], Match::slip);
    }
  }
  for (const auto& [sign, place] : signs_) {
    if (sign == folded) improve(best[place], Match::sign);
  }
}

void RankingKeys::matchNames(std::string_view typed, std::vector<Match>& best) const {
  for (const Name& name : names_) {
    const auto at = name.text.find(typed);
    if (at == std::string::npos) continue;
    const Match match = at == 0 && !name.isCountry ? Match::nameStart : Match::inside;
    for (const std::uint32_t place : name.places) improve(best[place], match);
  }
}

void RankingKeys::matchWords(std::string_view typed, std::vector<Match>& best) const {
  std::vector<Fit> fits(best.size());
  std::size_t count = 0;
  for (const std::string_view word : WordList(typed)) {
    if (count == kMostWords) return;
    const auto bit = static_cast<std::uint8_t>(1U << count++);
    fitStarts(word, bit, fits);
    if (letterCount(word) >= kSlipLetters) fitSlips(word, bit, fits);
  }
  const auto all = static_cast<std::uint8_t>((1U << count) - 1);
  for (std::size_t place = 0; place < fits.size(); ++place) {
    const auto [name, any, slip] = fits[place];
    const auto rest = static_cast<std::uint8_t>(all & ~any);
    if (name == all) improve(best[place], Match::wordStart);
    if (rest == 0) improve(best[place], Match::country);
    if (std::has_single_bit(rest) && (slip & rest) != 0) improve(best[place], Match::slip);
  }
}

void RankingKeys::fitStarts(std::string_view word, std::uint8_t bit, std::vector<Fit>& fits) const {
  auto at = std::lower_bound(words_.begin(), words_.end(), word,
                             [](const Word& a, std::string_view b) { return a.text < b; });
  for (; at != words_.end() && at->text.starts_with(word); ++at) {
    for (const std::uint32_t of : at->names) {
      for (const std::uint32_t place : names_[of].places) {
        fits[place].any |= bit;
        if (!names_[of].isCountry) fits[place].name |= bit;
      }
    }
  }
}

void RankingKeys::fitSlips(std::string_view word, std::uint8_t bit, std::vector<Fit>& fits) const {
  for (const Word& known : words_) {
    if (!beginsButForOneSlip(known.text, word)) continue;
    for (const std::uint32_t of : known.names) {
      for (const std::uint32_t place : names_[of].places) fits[place].slip |= bit;
    }
  }
}

}  // namespace fexora
