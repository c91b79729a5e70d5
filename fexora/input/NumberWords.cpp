#include "fexora/input/NumberWords.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "fexora/platform/text/AsciiCase.h"

namespace fexora {
namespace {

struct Word {
  std::string_view text;
  double factor;
};
constexpr Word kLetters[] = {{"k", 1e3}, {"K", 1e3}, {"M", 1e6}, {"B", 1e9}, {"T", 1e12}};
constexpr Word kWords[] = {
    {"bil", 1e9},       {"billion", 1e9}, {"billions", 1e9},  {"bio", 1e9},
    {"bn", 1e9},        {"crore", 1e7},   {"crores", 1e7},    {"hundred", 1e2},
    {"lac", 1e5},       {"lacs", 1e5},    {"lakh", 1e5},      {"lakhs", 1e5},
    {"mil", 1e6},       {"million", 1e6}, {"millions", 1e6},  {"mio", 1e6},
    {"mln", 1e6},       {"mn", 1e6},      {"mrd", 1e9},       {"thousand", 1e3},
    {"thousands", 1e3}, {"tn", 1e12},     {"trillion", 1e12}, {"trillions", 1e12},
    {"tsd", 1e3},       {"万", 1e4},      {"億", 1e8},        {"兆", 1e12},
};
constexpr std::size_t kLongestNumberWord = 32;

// Without the dot of an abbreviation, and ASCII in small letters.
std::string plainForm(std::string_view word) {
  while (word.ends_with('.')) word.remove_suffix(1);
  return ascii::lowercased(word);
}

template <std::size_t N>
const Word* find(const Word (&words)[N], std::string_view text) {
  const Word* const at = std::find_if(std::begin(words), std::end(words),
                                      [text](const Word& word) { return word.text == text; });
  return at != std::end(words) ? at : nullptr;
}

std::optional<double> localFactor(std::string_view word, std::string_view locale, Text& rules) {
  const std::vector<NumberWord> words = rules.numberWords(locale);
  const auto exact = std::find_if(words.begin(), words.end(),
                                  [word](const NumberWord& known) { return known.text == word; });
  if (exact != words.end()) return exact->factor;
  // A single letter in another case may be another word.
  const std::string form = plainForm(word);
  if (form.size() < 2) return std::nullopt;
  const auto near = std::find_if(words.begin(), words.end(), [&form](const NumberWord& known) {
    return plainForm(known.text) == form;
  });
  return near != words.end() ? std::optional(near->factor) : std::nullopt;
}

}  // namespace

std::optional<NumberFactor> numberFactor(std::string_view word, std::string_view locale,
                                         Text& rules) {
  if (word.empty() || word.size() > kLongestNumberWord) return std::nullopt;
  const Word* known = find(kLetters, word);
  if (known == nullptr) known = find(kWords, plainForm(word));
  const auto local = localFactor(word, locale, rules);
  if (!local) return known != nullptr ? std::optional(NumberFactor{known->factor}) : std::nullopt;
  const bool differs = known != nullptr && known->factor != *local;
  return NumberFactor{*local, differs ? std::optional(known->factor) : std::nullopt};
}

}  // namespace fexora
