#include "fexora/input/SentenceWords.h"

#include <algorithm>
#include <iterator>

namespace fexora {
namespace {

struct KnownWord {
  std::string_view text;
  SentenceWord kind;
};
using enum SentenceWord;
// In order, byte by byte.
constexpr KnownWord kKnown[] = {{"a", between},      {"als", between},    {"and", between},
                                {"as", between},     {"at", between},     {"auf", between},
                                {"aus", lead},       {"combien", lead},   {"convert", lead},
                                {"convertir", lead}, {"cours", lead},     {"de", of},
                                {"depuis", lead},    {"des", of},         {"du", of},
                                {"en", between},     {"et", between},     {"exchange", lead},
                                {"fait", lead},      {"font", lead},      {"from", lead},
                                {"how", lead},       {"in", between},     {"into", between},
                                {"is", lead},        {"kurs", lead},      {"many", lead},
                                {"much", lead},      {"nach", between},   {"of", of},
                                {"price", lead},     {"rate", lead},      {"rates", lead},
                                {"sind", lead},      {"taux", lead},      {"the", lead},
                                {"to", between},     {"umrechnen", lead}, {"und", between},
                                {"value", lead},     {"vers", between},   {"viel", lead},
                                {"vom", of},         {"von", of},         {"wechselkurs", lead},
                                {"what", lead},      {"whats", lead},     {"wie", lead},
                                {"worth", lead},     {"zu", between},     {"à", between},
                                {"إلى", between},    {"الى", between},    {"ب", between},
                                {"بـ", between},     {"تحويل", lead},     {"حول", lead},
                                {"سعر", lead},       {"في", between},     {"كم", lead},
                                {"من", of},          {"و", between},      {"يساوي", lead},
                                {"から", lead},      {"が", between},     {"で", between},
                                {"と", between},     {"に", between},     {"の", of},
                                {"は", between},     {"へ", between},     {"を", between},
                                {"レート", lead},    {"何", between},     {"換算", lead}};

// In order.
constexpr std::string_view kPlain[] = {
    "ada",    "all",      "amp",    "ape",     "apt",      "ar",   "arb",       "atom",    "aud",
    "bake",   "bam",      "bat",    "bob",     "brazil",   "cad",  "cake",      "celo",    "chad",
    "che",    "chia",     "chile",  "comp",    "compound", "cop",  "cosmos",    "cup",     "dai",
    "dash",   "dot",      "ern",    "fil",     "flow",     "gala", "gel",       "georgia", "gold",
    "gt",     "harmony",  "helium", "hot",     "ht",       "imx",  "jordan",    "kas",     "lek",
    "leo",    "link",     "luna",   "mad",     "maker",    "mali", "mana",      "mina",    "mop",
    "near",   "neo",      "nft",    "niger",   "one",      "op",   "palladium", "pen",     "pepe",
    "pi",     "platinum", "pol",    "polygon", "real",     "ron",  "rune",      "sand",    "sek",
    "silver", "sol",      "sos",    "std",     "stellar",  "sui",  "terra",     "tether",  "top",
    "try",    "turkey",   "uni",    "val",     "waves",    "woo",
};

struct Weight {
  std::string_view word;
  double grams;
};
constexpr Weight kWeights[] = {
    {"g", 1},
    {"gr", 1},
    {"gram", 1},
    {"gramm", 1},
    {"gramme", 1},
    {"grammes", 1},
    {"grams", 1},
    {"kg", 1000},
    {"kilo", 1000},
    {"kilogram", 1000},
    {"kilogramm", 1000},
    {"kilogramme", 1000},
    {"kilograms", 1000},
    {"kilos", 1000},
    {"once", kTroyOunce},
    {"onces", kTroyOunce},
    {"ounce", kTroyOunce},
    {"ounces", kTroyOunce},
    {"oz", kTroyOunce},
    {"ozt", kTroyOunce},
    {"unze", kTroyOunce},
    {"unzen", kTroyOunce},
    {"feinunze", kTroyOunce},
    {"グラム", 1},
    {"オンス", kTroyOunce},
    {"غرام", 1},
    {"جرام", 1},
    {"أونصة", kTroyOunce},
};

constexpr bool isBefore(const KnownWord& one, const KnownWord& other) noexcept {
  return one.text < other.text;
}
static_assert(std::is_sorted(std::begin(kKnown), std::end(kKnown), isBefore));

}  // namespace

SentenceWord sentenceWord(std::string_view word) noexcept {
  const auto* const at =
      std::lower_bound(std::begin(kKnown), std::end(kKnown), KnownWord{word, none}, isBefore);
  return at != std::end(kKnown) && at->text == word ? at->kind : none;
}

bool isPlainWord(std::string_view word) noexcept {
  return std::binary_search(std::begin(kPlain), std::end(kPlain), word);
}

bool isWrittenAsName(std::string_view word) noexcept {
  constexpr std::size_t kShortest = 3;
  constexpr std::size_t kLongestName = 8;
  const auto isSmall = [](char c) { return c >= 'a' && c <= 'z'; };
  return word.size() >= kShortest && word.size() <= kLongestName && word[0] >= 'A' &&
         word[0] <= 'Z' && std::all_of(word.begin() + 1, word.end(), isSmall);
}

std::optional<double> gramsIn(std::string_view word) noexcept {
  const auto* const at = std::find_if(std::begin(kWeights), std::end(kWeights),
                                      [word](const Weight& weight) { return weight.word == word; });
  return at != std::end(kWeights) ? std::optional(at->grams) : std::nullopt;
}

}  // namespace fexora
