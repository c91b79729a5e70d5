#include "fexora/catalogue/RankingKeys.h"

#include <algorithm>
#include <bit>
#include <map>
#include <utility>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/catalogue/EnglishNames.h"
#include "fexora/catalogue/OneSlip.h"
#include "fexora/platform/text/WordList.h"

namespace fexora {
namespace {

constexpr std::size_t kMostWords = 8;  // as many bits as Fit has
constexpr std::size_t kSlipLetters = 4;

// English names that people type and the CLDR does not have.
struct EverydayName {
  std::string_view region, name;
};
constexpr EverydayName kEverydayNames[] = {
    {"AE", "UAE"},           {"CI", "Ivory Coast"}, {"CZ", "Czech Republic"}, {"GB", "England"},
    {"GB", "Great Britain"}, {"NL", "Holland"},     {"SZ", "Swaziland"},      {"TR", "Turkey"},
    {"US", "America"},       {"US", "USA"},
};

bool isWordByte(char byte) noexcept {
  const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
  return letter || (byte >= '0' && byte <= '9') || static_cast<unsigned char>(byte) >= 0x80;
}

// The bytes of a mark at the head of `text`, of which `joins` tells whether it stands inside of a
// word (the apostrophe, the okina); 0 for anything else.
std::size_t markLength(std::string_view text, bool& joins) noexcept {
  // U+2000 to U+203F hold dashes, quotation marks and blanks.
  const bool general = text.starts_with("\u2019") || text.substr(0, 2) == "\xE2\x80";
  const bool modifier = text.starts_with("\u02BB") || text.starts_with("\u02BC");
  joins = modifier || text[0] == '\'' || text.starts_with("\u2018") || text.starts_with("\u2019");
  if (modifier) return 2;
  if (general) return std::min(text.size(), std::size_t{3});
  return isWordByte(text[0]) ? 0 : 1;
}

// The words of a folded text, parted by single blanks.
std::string wordsOf(std::string_view folded) {
  std::string words;
  bool parted = false;
  while (!folded.empty()) {
    bool joins = false;
    const std::size_t mark = markLength(folded, joins);
    if (mark == 0) {
      if (parted && !words.empty()) words += ' ';
      words += folded[0];
    }
    parted = mark != 0 && (parted || !joins);
    folded.remove_prefix(std::max(mark, std::size_t{1}));
  }
  return words;
}

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

void improve(Match& best, Match found) noexcept {
  best = std::min(best, found);
}

}  // namespace

RankingKeys::RankingKeys(const std::vector<CurrencyRef>& currencies, HostStrings& strings,
                         Text& text, Version version)
    : version_(std::move(version)) {
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
        addName(text, name, true, places);
      }
    }
    for (const auto& [of, name] : kEverydayNames) {
      if (of == region) addName(text, name, true, places);
    }
  }
}

void RankingKeys::addName(Text& text, std::string_view name, bool isCountry,
                          const std::vector<std::uint32_t>& places) {
  std::string words = wordsOf(text.folded(name));
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
  const std::string words = wordsOf(folded);
  if (!folded.empty()) matchCodes(folded, best);
  if (!words.empty()) {
    matchNames(words, best);
    matchWords(words, best);
  }
  return best;
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
