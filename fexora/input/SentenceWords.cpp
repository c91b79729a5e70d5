#include "fexora/input/SentenceWords.h"

#include <algorithm>
#include <iterator>

namespace fexora {
namespace {

constexpr std::string_view kBetween[] = {
    "in",  "to", "into", "as",  "and", "at", "nach", "zu", "als", "und",
    "auf", "en", "vers", "et",  "a",   "à",  "が",   "を", "に",  "へ",
    "で",  "は", "と",   "إلى", "الى", "في", "ب",    "بـ", "و",   "何",
};
constexpr std::string_view kOf[] = {"of", "von", "vom", "de", "des", "du", "の", "من"};
constexpr std::string_view kLead[] = {
    "convert",     "exchange",  "rate", "rates", "what",   "whats", "is",        "how",
    "much",        "many",      "from", "price", "value",  "worth", "the",       "kurs",
    "wechselkurs", "umrechnen", "wie",  "viel",  "sind",   "aus",   "convertir", "taux",
    "cours",       "combien",   "font", "fait",  "depuis", "換算",  "レート",    "から",
    "حول",         "تحويل",     "سعر",  "كم",    "يساوي",
};

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

template <std::size_t N>
bool holds(const std::string_view (&words)[N], std::string_view word) noexcept {
  return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

}  // namespace

SentenceWord sentenceWord(std::string_view word) noexcept {
  if (holds(kBetween, word)) return SentenceWord::between;
  if (holds(kOf, word)) return SentenceWord::of;
  return holds(kLead, word) ? SentenceWord::lead : SentenceWord::none;
}

bool isPlainWord(std::string_view word) noexcept {
  return std::binary_search(std::begin(kPlain), std::end(kPlain), word);
}

bool isWrittenAsName(std::string_view word) noexcept {
  constexpr std::size_t kShortest = 3;
  constexpr std::size_t kLongest = 8;
  const auto isSmall = [](char c) { return c >= 'a' && c <= 'z'; };
  return word.size() >= kShortest && word.size() <= kLongest && word[0] >= 'A' && word[0] <= 'Z' &&
         std::all_of(word.begin() + 1, word.end(), isSmall);
}

std::optional<double> gramsIn(std::string_view word) noexcept {
  const auto* const at = std::find_if(std::begin(kWeights), std::end(kWeights),
                                      [word](const Weight& weight) { return weight.word == word; });
  return at != std::end(kWeights) ? std::optional(at->grams) : std::nullopt;
}

}  // namespace fexora
