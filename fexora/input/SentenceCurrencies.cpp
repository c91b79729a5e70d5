#include "fexora/input/SentenceCurrencies.h"

#include <algorithm>
#include <utility>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/catalogue/CurrencySigns.h"
#include "fexora/input/Hundredths.h"
#include "fexora/input/SentenceWords.h"
#include "fexora/input/TypedSides.h"
#include "fexora/platform/text/AsciiCase.h"
#include "fexora/platform/text/Utf8.h"

namespace fexora {
namespace {

using By = TypedAmount::CurrencyBy;
using Why = SignReading::Why;

// As many tokens as the longest names have: "Uruguayische Pesos (1975–1993)".
constexpr std::size_t kMostTokens = 14;
constexpr std::size_t kLongestCode = 8;
constexpr std::size_t kLongestPair = 12;
constexpr double kSatoshis = 1e8;
constexpr double kCents = 100;

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

// How many brackets are open after the token.
int openAfter(const SentenceToken& token, int open) {
  if (token.isMark(U'(') || token.isMark(U'[')) return open + 1;
  return token.isMark(U')') || token.isMark(U']') ? open - 1 : open;
}

// Names hold years and notes as well: "dollars (1980–2008)", "yuan (offshore)".
bool mayStandInName(const SentenceToken& token) {
  constexpr std::u32string_view kMarks = U"-\u2013\u2014/&'()[]";
  using Token = SentenceToken::Kind;
  if (token.kind == Token::mark) return kMarks.find(token.sign) != kMarks.npos;
  return token.kind == Token::word || token.exponent.empty();
}

bool mayEndName(const SentenceToken& token) {
  return token.kind != SentenceToken::Kind::mark || token.isMark(U')') || token.isMark(U']');
}

// As signs have them.
std::string withPlainBlanks(std::string_view text) {
  std::string plain;
  for (const TypedSymbol& symbol : typedSymbols(text).symbols) appendUtf8(plain, symbol.sign);
  return plain;
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
  const bool isPair = token + 1 < all.size() && all[token].kind == SentenceToken::Kind::word &&
                      all[token + 1].kind == SentenceToken::Kind::word &&
                      all[token].word == SentenceWord::none;
  auto found = severalNamed(token);
  if (found || !isPair) return found;
  // A sign with a blank in it, as "F CFA".
  const std::string_view text = tokens_.textOf(token, token + 2);
  const bool mayBeSign = !all[token + 1].isGlued && text.size() < kLongestPair && holdsSign(text);
  if (mayBeSign) found = sign(withPlainBlanks(text));
  if (found) found->last = token + 2;
  return found;
}

// The longest name of more than one token.
std::optional<Mention> SentenceCurrencies::severalNamed(std::size_t token) const {
  const auto& all = tokens_.all();
  if (names_ == nullptr || !names_->mayGoOn(tokens_.textOf(token, token + 1))) return std::nullopt;
  std::size_t ends[kMostTokens];
  std::size_t count = 0;
  int open = 0;
  for (std::size_t at = token; at < all.size() && at < token + kMostTokens; ++at) {
    open = openAfter(all[at], open);
    if (!mayStandInName(all[at]) || open < 0) break;
    if (at > token && open == 0 && mayEndName(all[at])) ends[count++] = at + 1;
  }
  while (count > 0) {
    const std::size_t last = ends[--count];
    auto found = name(tokens_.textOf(token, last));
    if (!found) continue;
    found->last = last;
    return found;
  }
  return std::nullopt;
}

std::optional<Mention> SentenceCurrencies::single(std::size_t token) const {
  const TypedRun run = tokens_.all()[token].run;
  const std::string& lower = tokens_.all()[token].lower;
  if (tokens_.all()[token].word != SentenceWord::none) return std::nullopt;
  std::string typed = spelled(run);
  auto found = nameLikeCode(typed);
  if (!found) found = code(typed);
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

// Where a language has a name of a currency that is another one's code, as "Sol".
std::optional<Mention> SentenceCurrencies::nameLikeCode(std::string_view typed) const {
  auto found = isWrittenAsName(typed) ? name(typed) : std::nullopt;
  return found && found->kind == NameKind::currency ? std::move(found) : std::nullopt;
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
  return wholeOf(ascii::uppercased(typed));
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
  return coinsOf(all[token].lower);
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
  if (next < all.size() && all[next].word == SentenceWord::of) ++next;
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
