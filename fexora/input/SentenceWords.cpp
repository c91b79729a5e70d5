#include "fexora/input/SentenceWords.h"

#include <algorithm>
#include <iterator>

namespace fexora {
namespace {

// In order, byte by byte.
constexpr std::string_view kJoiningWords[] = {
    "a",    "als", "and", "as",   "at", "auf", "en",  "et",  "in", "into",
    "nach", "to",  "und", "vers", "zu", "à",   "إلى", "الى", "ب",  "بـ",
    "في",   "و",   "が",  "で",   "と", "に",  "は",  "へ",  "を", "何"};
constexpr std::string_view kOfWords[] = {"de", "des", "du", "of", "vom", "von", "من", "の"};
constexpr std::string_view kLeadWords[] = {
    "aujourd'hui", "aus",   "combien", "convert",   "convertir", "cours", "depuis",      "exchange",
    "fait",        "font",  "from",    "heute",     "how",       "is",    "jetzt",       "kurs",
    "maintenant",  "many",  "much",    "now",       "price",     "rate",  "rates",       "sind",
    "taux",        "the",   "today",   "umrechnen", "value",     "viel",  "wechselkurs", "what",
    "whats",       "wie",   "worth",   "الآن",      "اليوم",     "تحويل", "حول",         "سعر",
    "كم",          "يساوي", "から",    "レート",    "今",        "今日",  "換算"};

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
constexpr bool holdsWord(const std::string_view (&words)[N], std::string_view word) noexcept {
  return std::binary_search(std::begin(words), std::end(words), word);
}
static_assert(std::is_sorted(std::begin(kJoiningWords), std::end(kJoiningWords)));
static_assert(std::is_sorted(std::begin(kOfWords), std::end(kOfWords)));
static_assert(std::is_sorted(std::begin(kLeadWords), std::end(kLeadWords)));

}  // namespace

SentenceWord sentenceWord(std::string_view word) noexcept {
  if (holdsWord(kJoiningWords, word)) return SentenceWord::between;
  if (holdsWord(kOfWords, word)) return SentenceWord::of;
  return holdsWord(kLeadWords, word) ? SentenceWord::lead : SentenceWord::none;
}

bool isPlainWord(std::string_view word) noexcept {
  return holdsWord(kPlain, word);
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
