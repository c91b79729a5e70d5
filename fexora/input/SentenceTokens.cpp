#include "fexora/input/SentenceTokens.h"

#include <algorithm>
#include <utility>

#include "fexora/catalogue/CurrencySigns.h"
#include "fexora/input/Hundredths.h"
#include "fexora/input/TypedSides.h"
#include "fexora/platform/text/AsciiCase.h"
#include "fexora/platform/text/Utf8.h"

namespace fexora {
namespace {

using TokenKind = SentenceToken::Kind;

constexpr std::u32string_view kBlanks = U" \t\r\n";
constexpr std::size_t kUsualTokens = 8;
// Signs of currencies that are no letters alone are looked up no further than this.
constexpr std::size_t kLongestSign = 12;

bool isBlank(char32_t sign) noexcept {
  return kBlanks.find(sign) != kBlanks.npos;
}

// Particles that stand between Japanese words without a blank.
bool isParticle(char32_t sign) noexcept {
  constexpr std::u32string_view kParticles = U"をにへではとのが何";
  return kParticles.find(sign) != kParticles.npos;
}

// What may be part of a sign of money besides letters, and is no operator.
bool mayBeSign(char32_t sign) noexcept {
  constexpr std::u32string_view kOthers = U"*+-=,;:!?()%^&<>|_\"'#";
  return !isBlank(sign) && !isTypedDigit({sign, 0}) && kOthers.find(sign) == kOthers.npos &&
         sign != 0x00D7 && sign != 0x00F7 && sign != 0x2192;
}

std::string lowerOf(TypedRun run) {
  std::string word = spelled(run);
  if (endsShortened(run)) word.pop_back();
  for (char& c : word) c = ascii::lower(c);
  return word;
}

}  // namespace

SentenceTokens::SentenceTokens(std::string_view text, const NumberMarks& marks)
    : text_(text),
      marks_(marks, {}),
      hasPairs_(marks.otherGroups == 2),
      symbols_(typedSymbols(text)) {
  for (TypedSymbol& symbol : symbols_.symbols) {
    if (isBlank(symbol.sign)) symbol.sign = U' ';
  }
  tokens_.reserve(kUsualTokens);
  if (!symbols_.broken) cut();
}

char32_t SentenceTokens::sign(std::size_t at) const noexcept {
  return at < symbols_.symbols.size() ? symbols_.symbols[at].sign : U'\0';
}

bool SentenceTokens::isDigit(std::size_t at) const noexcept {
  return at < symbols_.symbols.size() && isTypedDigit(symbols_.symbols[at]);
}

bool SentenceTokens::isLetter(std::size_t at) const noexcept {
  return at < symbols_.symbols.size() && sign(at) != U' ' && isTypedLetter(sign(at));
}

void SentenceTokens::cut() {
  while (at_ < symbols_.symbols.size()) {
    if (sign(at_) == U' ') {
      ++at_;
      isGlued_ = false;
    } else if (!takeNumber() && !takeSign() && !takeWord()) {
      add(TokenKind::mark, 1);
    }
  }
}

void SentenceTokens::add(TokenKind kind, std::size_t length) {
  const TypedRun run = TypedRun(symbols_.symbols).subspan(at_, length);
  char32_t mark = run.front().sign;
  if (mark == 0x00D7) mark = U'*';
  if (mark == 0x00F7) mark = U'/';
  const std::size_t last = run.back().place;
  SentenceToken& token = tokens_.emplace_back();
  token.kind = kind;
  token.isGlued = isGlued_ && tokens_.size() > 1;
  token.sign = mark;
  token.run = run;
  token.begin = run.front().place;
  token.end = last + utf8Length(text_.substr(last));
  if (kind == TokenKind::word) {
    token.lower = lowerOf(run);
    token.word = sentenceWord(token.lower);
  }
  at_ += length;
  isGlued_ = true;
}

// From a digit, or a mark before one, to the last digit of the number.
std::size_t SentenceTokens::numberLength() const {
  std::size_t at = at_;
  if (!isDigit(at) && (!marks_.canEnd(sign(at)) || !isDigit(at + 1))) return 0;
  if (!isDigit(at)) ++at;
  const auto digitsFrom = [this](std::size_t from) {
    std::size_t end = from;
    while (isDigit(end)) ++end;
    return end - from;
  };
  while (true) {
    at += digitsFrom(at);
    const char32_t mark = sign(at);
    const std::size_t group = digitsFrom(at + 1);
    if (group == 0 || mark == U'\0') break;
    // After a blank only a group goes on with the number.
    const bool isGroup = group == 3 || (hasPairs_ && group == 2);
    if (mark == U' ' ? !isGroup : !marks_.isMark(mark)) break;
    if (mark == U'$' && !marks_.canBeDecimal(mark, group)) break;
    ++at;
  }
  return at - at_;
}

bool SentenceTokens::takeNumber() {
  const bool follows = isGlued_ && !tokens_.empty() && tokens_.back().kind == TokenKind::word;
  const std::size_t length = numberLength();
  if (length == 0 || (follows && !isDigit(at_) && endsShortened(tokens_.back().run))) return false;
  // "1INCH" is a code.
  std::size_t wordEnd = at_ + length;
  while (wordEnd == at_ + length ? isLetter(wordEnd) : (isLetter(wordEnd) || isDigit(wordEnd)))
    ++wordEnd;
  if (length == 1 && wordEnd > at_ + 1) {
    const TypedRun word = TypedRun(symbols_.symbols).subspan(at_, wordEnd - at_);
    if (!typedCode(spelled(word)).empty()) {
      add(TokenKind::word, word.size());
      return true;
    }
  }
  add(TokenKind::number, length);
  SentenceToken& number = tokens_.back();
  std::size_t extra = 0;
  const TypedRun rest = TypedRun(symbols_.symbols).subspan(at_);
  std::size_t digits = rest.size() > 1 && (rest[1].sign == U'-' || rest[1].sign == U'+') ? 2 : 1;
  while (digits < rest.size() && isTypedDigit(rest[digits])) ++digits;
  const auto exponent = exponentOf(rest.first(std::min(digits, rest.size())));
  if (exponent && !isLetter(at_ + digits)) {
    number.exponent = *exponent;
    extra = digits;
  }
  if (const std::size_t ending = evenEnding(rest.subspan(extra)); ending > 0) {
    extra += ending;
  } else if (extra == 0 && marks_.canEnd(sign(at_)) && !isLetter(at_ + 1)) {
    extra = 1;
  }
  if (extra > 0) {
    const std::size_t last = rest[extra - 1].place;
    number.end = last + utf8Length(text_.substr(last));
    at_ += extra;
  }
  return true;
}

// The longest sign of money here that is more than letters.
bool SentenceTokens::takeSign() {
  std::size_t length = 0;
  bool hasOther = false;
  while (length < kLongestSign && at_ + length < symbols_.symbols.size() &&
         mayBeSign(sign(at_ + length))) {
    hasOther = hasOther || !isLetter(at_ + length);
    ++length;
  }
  for (; hasOther && length > 0; --length) {
    const TypedRun run = TypedRun(symbols_.symbols).subspan(at_, length);
    const bool splits = isLetter(at_ + length - 1) && isLetter(at_ + length);
    if (splits) continue;
    if (std::all_of(run.begin(), run.end(),
                    [](const TypedSymbol& s) { return isTypedLetter(s.sign); })) {
      return false;
    }
    const std::string spelt = spelled(run);
    if (!readSign(spelt, {}) && !coinsOf(spelt)) continue;
    add(TokenKind::word, length);
    // "S/." and "S/" are one.
    if (sign(at_) == U'.' && run.back().sign == U'/') {
      const std::size_t dot = symbols_.symbols[at_++].place;
      tokens_.back().end = dot + utf8Length(text_.substr(dot));
    }
    return true;
  }
  return false;
}

bool SentenceTokens::takeWord() {
  if (!isLetter(at_)) return false;
  std::size_t end = at_ + 1;
  while (!isParticle(sign(at_)) && end < symbols_.symbols.size() && !isParticle(sign(end))) {
    constexpr std::u32string_view kJoining = U".'\u2018\u00B7\u30FB";
    const bool joins = kJoining.find(sign(end)) != kJoining.npos && isLetter(end + 1);
    if (!isLetter(end) && !joins) break;
    ++end;
  }
  // The dot of an abbreviation, or of the sentence's end.
  if (sign(end) == U'.') ++end;
  add(TokenKind::word, end - at_);
  return true;
}

std::string_view SentenceTokens::textOf(std::size_t first, std::size_t last) const noexcept {
  return text_.substr(tokens_[first].begin, tokens_[last - 1].end - tokens_[first].begin);
}

}  // namespace fexora
