#include "fexora/input/SentenceCurrencies.h"

#include <algorithm>
#include <utility>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/catalogue/CurrencySigns.h"
#include "fexora/input/Hundredths.h"
#include "fexora/input/SentenceWords.h"
#include "fexora/input/TypedSides.h"

namespace fexora {
namespace {

using By = TypedAmount::CurrencyBy;
using Why = SignReading::Why;

// As many words as the longest names have.
constexpr std::size_t kMostWords = 6;
constexpr std::size_t kLongestCode = 8;
constexpr double kSatoshis = 1e8;
constexpr double kCents = 100;

std::string inCapitals(std::string_view typed) {
  std::string code(typed);
  for (char& c : code) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  return code;
}

By byOf(Why why, By only) {
  if (why == Why::only) return only;
  return why == Why::region ? By::region : By::trade;
}

bool isSatoshi(std::string_view word) {
  return word == "satoshi" || word == "satoshis" || word == "sats" || word == "sat";
}

// Articles and prepositions that are written together with a name, as in "d'euros".
std::string_view withoutArticle(std::string_view word) {
  for (const std::string_view article : {"d'", "l'", "d\u2019", "l\u2019", "\u0628\u0627\u0644",
                                         "\u0648\u0627\u0644", "\u0627\u0644", "\u0644\u0644"}) {
    if (word.starts_with(article) && word.size() >= article.size() + 2) {
      return word.substr(article.size());
    }
  }
  return {};
}

bool holdsSign(std::string_view text) {
  return text.find('$') != text.npos || text.find("\u00A3") != text.npos || text.ends_with("CFA");
}

bool mayStandInName(const SentenceToken& token) {
  return token.kind == SentenceToken::Kind::word || token.isMark(U'-') || token.isMark(U'&') ||
         token.isMark(U'\'');
}

}  // namespace

bool Mention::isMetal() const {
  const CurrencyFacts* const facts = currencyFacts(currency->code());
  return facts != nullptr && facts->kind == CurrencyKind::metal;
}

const std::optional<Mention>& SentenceCurrencies::at(std::size_t token) const {
  static const std::optional<Mention> kNone;
  const auto& all = tokens_.all();
  if (token >= all.size() || all[token].kind != SentenceToken::Kind::word) return kNone;
  if (!known_[token]) known_[token] = found(token);
  return *known_[token];
}

std::optional<Mention> SentenceCurrencies::found(std::size_t token) const {
  std::optional<Mention> mention = several(token);
  if (!mention) mention = coins(token);
  if (!mention) mention = single(token);
  if (!mention) return mention;
  mention->first = token;
  if (mention->last == 0) mention->last = token + 1;
  // "US cents"
  const auto coin = mention->parts == 1 ? coinsAt(mention->last) : std::nullopt;
  if (coin && (coin->empty() || *coin == mention->currency->code())) {
    mention->parts = kCents;
    ++mention->last;
  }
  return mention;
}

std::optional<Mention> SentenceCurrencies::in(std::string_view part, std::size_t token) const {
  auto found = code(part);
  if (!found) found = sign(part);
  if (!found && part.size() > 1) found = name(part);
  if (found) {
    found->first = token;
    found->last = token + 1;
  }
  return found;
}

bool SentenceCurrencies::isSignOf(const Mention& mention, const Mention& other) const {
  if (mention.by == By::code || mention.last != mention.first + 1) return false;
  const auto codes = codesOfSign(spelled(tokens_.all()[mention.first].run));
  return std::find(codes.begin(), codes.end(), other.currency->code()) != codes.end();
}

std::optional<Mention> SentenceCurrencies::several(std::size_t token) const {
  const auto& all = tokens_.all();
  std::size_t most = token;
  while (most < all.size() && most < token + kMostWords && mayStandInName(all[most])) ++most;
  for (std::size_t last = most; last > token + 1; --last) {
    if (all[last - 1].kind != SentenceToken::Kind::word) continue;
    const std::string_view text = tokens_.textOf(token, last);
    // A sign with a blank in it, as "F CFA".
    const bool mayBeSign = last == token + 2 && text.size() < kLongestCode;
    std::optional<Mention> found;
    if (mayBeSign && text.find(' ') != text.npos && holdsSign(text)) {
      found = sign(text);
    }
    if (!found) found = name(text);
    if (!found) continue;
    found->last = last;
    return found;
  }
  return std::nullopt;
}

std::optional<Mention> SentenceCurrencies::single(std::size_t token) const {
  const TypedRun run = tokens_.all()[token].run;
  std::string typed = spelled(run);
  const std::string lower = tokens_.lower(token);
  if (sentenceWord(lower) != SentenceWord::none) return std::nullopt;
  auto found = code(typed);
  if (!found) found = sign(typed);
  if (endsShortened(run)) {
    typed.pop_back();
    if (!found) found = code(typed);
    if (!found) found = sign(typed);
  }
  if (!found && isSatoshi(lower)) {
    found = wholeOf("BTC");
    if (found) found->parts = kSatoshis;
  }
  if (!found) found = name(typed);
  if (!found) found = name(withoutArticle(typed));
  // A letter may be anything.
  const bool isLetter = typed.size() == 1 && isTypedLetter(run.front().sign);
  if (found) found->isPlain = isLetter || (typed == lower && isPlainWord(lower));
  return found;
}

std::optional<Mention> SentenceCurrencies::code(std::string_view typed) const {
  if (typed.size() > kLongestCode) return std::nullopt;
  if (const auto whole = hundredthsOf(typed)) {
    auto found = wholeOf(*whole);
    if (found) found->parts = kCents;
    return found;
  }
  // The one sign that is a code but for its case.
  if (typed == "Ar") return std::nullopt;
  return wholeOf(inCapitals(typed));
}

std::optional<Mention> SentenceCurrencies::wholeOf(std::string_view code) const {
  Mention found;
  found.currency = catalogue_.currencyForCode(code);
  return found.currency != nullptr ? std::optional(std::move(found)) : std::nullopt;
}

std::optional<Mention> SentenceCurrencies::sign(std::string_view typed) const {
  const auto read = readSign(typed, locale_);
  auto found = read ? wholeOf(read->code) : std::nullopt;
  if (found) found->by = byOf(read->why, By::sign);
  return found;
}

std::optional<Mention> SentenceCurrencies::name(std::string_view typed) const {
  if (names_ == nullptr || typed.empty()) return std::nullopt;
  const auto named = names_->find(typed);
  if (!named) return std::nullopt;
  Mention found;
  found.currency = named->currency;
  found.by = byOf(named->why, By::name);
  found.kind = named->kind;
  return found;
}

std::optional<std::string_view> SentenceCurrencies::coinsAt(std::size_t token) const {
  const auto& all = tokens_.all();
  if (token >= all.size() || all[token].kind != SentenceToken::Kind::word) return std::nullopt;
  return coinsOf(tokens_.lower(token));
}

// "pence", "cents", "cents of USD", "cent euro".
std::optional<Mention> SentenceCurrencies::coins(std::size_t token) const {
  const auto coin = coinsAt(token);
  if (!coin) return std::nullopt;
  if (!coin->empty()) {
    auto found = wholeOf(*coin);
    if (found) found->parts = kCents;
    return found;
  }
  std::size_t next = token + 1;
  const auto& all = tokens_.all();
  if (next < all.size() && sentenceWord(tokens_.lower(next)) == SentenceWord::of) ++next;
  std::optional<Mention> found = several(next < all.size() ? next : token);
  if (!found && next < all.size() && all[next].kind == SentenceToken::Kind::word)
    found = single(next);
  if (found && found->last == 0) found->last = next + 1;
  if (!found) {
    // Those of the dollars and euros that most have in mind.
    found = sign("$");
    const auto local = currencyOfLocale(locale_);
    if (local && *local == "EUR") found = wholeOf("EUR");
    if (found && found->by != By::region)
      found->by = local && *local == found->currency->code() ? By::region : By::trade;
  }
  if (found) found->parts = kCents;
  return found;
}

}  // namespace fexora
