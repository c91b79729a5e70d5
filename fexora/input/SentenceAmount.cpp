#include "fexora/input/SentenceAmount.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "fexora/input/NumberWords.h"
#include "fexora/input/Reasons.h"
#include "fexora/input/SentenceWords.h"
#include "fexora/platform/text/Utf8.h"

namespace fexora {
namespace {

using By = TypedAmount::CurrencyBy;
using Kind = SentenceProblem::Kind;

constexpr double kMillion = 1e6;
constexpr int kMostFactors = 3;
constexpr std::string_view kNumberMissing = "there is no number here";
constexpr std::string_view kPlainWord = "this is a plain word here, and no currency";
constexpr std::string_view kUnit = "this is a unit of weight, beside what is no metal";

bool isSign(const SentenceToken* token) {
  return token != nullptr && (token->isMark(U'-') || token->isMark(U'+'));
}

}  // namespace

bool SentenceAmount::startsAt(std::size_t token) const {
  const auto& all = cursor_.tokens().all();
  while (token < all.size() && (isSign(&all[token]) || all[token].isMark(U'('))) ++token;
  for (int mentions = 0; mentions < 2; ++mentions) {
    if (token >= all.size()) return false;
    if (all[token].kind == SentenceToken::Kind::number) return true;
    const auto money = currencies_.at(token);
    if (!money) return false;
    token = money->last;
    if (token < all.size() && (isSign(&all[token]) || all[token].isMark(U'('))) ++token;
  }
  return token < all.size() && all[token].kind == SentenceToken::Kind::number;
}

bool SentenceAmount::takeMinus() {
  if (!isSign(cursor_.token())) return false;
  const bool isMinus = cursor_.looksAt(U'-');
  cursor_.moveTo(cursor_.at() + 1);
  return isMinus;
}

std::optional<Mention> SentenceAmount::takeCurrency() {
  auto money = currencies_.at(cursor_.at());
  if (money && startsAt(money->last)) {
    cursor_.moveTo(money->last);
    // "USD $100"
    const auto second = currencies_.at(cursor_.at());
    if (second && (second->currency == money->currency || currencies_.isSignOf(*second, *money))) {
      cursor_.moveTo(second->last);
      if (money->parts == 1) money->parts = second->parts;
    }
    return money;
  }
  return std::nullopt;
}

Quantity SentenceAmount::operand() {
  Quantity quantity;
  bool isNegative = takeMinus();
  quantity.money = takeCurrency();
  if (!isNegative) isNegative = takeMinus();
  const SentenceToken* const number = cursor_.token();
  if (number == nullptr || number->kind != SentenceToken::Kind::number) {
    cursor_.failHere(number == nullptr ? Kind::incomplete : Kind::unexpected, kNumberMissing);
    return quantity;
  }
  const std::size_t first = cursor_.at();
  number_ = first;
  cursor_.moveTo(first + 1);
  takeNumber(*number, quantity);
  if (quantity.money) takeParts(quantity, *quantity.money);
  takeWords(quantity);
  if (isNegative) scale(quantity, -1, -1);
  // "5k-usd"
  if (!isNegative && takeTrailingMinus(quantity)) takeMoney(quantity);
  const SentenceToken* const next = cursor_.token();
  const bool isForeign = next != nullptr && next->kind != SentenceToken::Kind::mark &&
                         next->isGlued && cursor_.at() == first + 1;
  if (isForeign) cursor_.failHere(Kind::noNumber, kForeign);
  return quantity;
}

void SentenceAmount::takeNumber(const SentenceToken& number, Quantity& quantity) {
  const auto after = currencies_.at(cursor_.at());
  const std::optional<Mention>& money = quantity.money ? quantity.money : after;
  const TypedMarks marks(marks_, moneyOf(money ? money->currency->code() : std::string_view()));
  const NumberReading read = readNumber(number.run, marks, number.exponent);
  if (!read.reason.empty()) {
    cursor_.fail(Kind::noNumber, read.reason, cursor_.at() - 1);
    return;
  }
  quantity.value = read.value;
  quantity.other = read.other.value_or(read.value);
  if (read.other) open_.push_back({cursor_.at() - 1, cursor_.at(), read.value, *read.other});
}

void SentenceAmount::takeWords(Quantity& quantity) {
  takeTrailingMinus(quantity);
  takeFactors(quantity);
  takeWeight(quantity);
  takeMoney(quantity);
}

// "5-", and "5.00- EUR"; between two numbers it is a sign of the calculation, in "usd->eur" a part
// of an arrow, and in "20-dollar" a hyphen.
bool SentenceAmount::takeTrailingMinus(Quantity& quantity) {
  if (!cursor_.looksAt(U'-') || !cursor_.token()->isGlued || quantity.value < 0 ||
      startsAt(cursor_.at() + 1) ||
      (cursor_.token(1) != nullptr && cursor_.token(1)->isMark(U'>'))) {
    return false;
  }
  const auto next = currencies_.at(cursor_.at() + 1);
  // "usd-eur"
  if (next && quantity.money) return false;
  const bool isHyphen = looksAtHyphen(next.has_value());
  cursor_.moveTo(cursor_.at() + 1);
  if (!isHyphen) scale(quantity, -1, -1);
  return isHyphen;
}

// Between a number and a word. "1.234,50-EUR" is how accountants write a negative amount.
bool SentenceAmount::looksAtHyphen(bool isBeforeMoney) const {
  const SentenceToken& mark = *cursor_.token();
  const SentenceToken* const word = cursor_.token(1);
  const bool isWord = word != nullptr && word->kind == SentenceToken::Kind::word && word->isGlued &&
                      isTypedLetter(word->run.front().sign);
  const bool isAscii = mark.end - mark.begin == 1;
  if (!isWord || !isAscii) return false;
  const bool mayBeMinus = isBeforeMoney && cursor_.at() == number_ + 1;
  const TypedRun number = cursor_.tokens().all()[number_].run;
  return !mayBeMinus || std::all_of(number.begin(), number.end(), isTypedDigit);
}

void SentenceAmount::scale(Quantity& quantity, double factor, double other) {
  quantity.value *= factor;
  quantity.other *= other;
}

// As quotients, which are nearer than products with a part that no double is.
void SentenceAmount::takeParts(Quantity& quantity, const Mention& money) {
  quantity.value /= money.parts;
  quantity.other /= money.parts;
}

void SentenceAmount::takeFactors(Quantity& quantity) {
  for (int factors = 0; factors < kMostFactors; ++factors) {
    const SentenceToken* const word = cursor_.token();
    if (word == nullptr || word->kind != SentenceToken::Kind::word) return;
    const std::string text = spelled(word->run);
    const bool isLetter = text.size() == 1;
    // Standing alone a letter is more likely a sign, and "m" is a unit.
    const bool hasMoney = quantity.money || currencies_.at(cursor_.at() + 1);
    if (isLetter && !word->isGlued && (!hasMoney || text == "m")) return;
    if (!isLetter && currencies_.at(cursor_.at())) return;
    auto factor = numberFactor(text, locale_, rules_);
    if (!factor && text == "m" && hasMoney) factor = NumberFactor{kMillion};
    if (!factor) {
      if (word->isGlued && factors == 0) takeGluedFactor(quantity);
      return;
    }
    const double before = quantity.value;
    scale(quantity, factor->factor, factor->other.value_or(factor->factor));
    if (factor->other) {
      open_.push_back(
          {cursor_.at() - 1, cursor_.at() + 1, quantity.value, before * *factor->other});
    }
    cursor_.moveTo(cursor_.at() + 1);
  }
}

// "5kusd"
bool SentenceAmount::takeGluedFactor(Quantity& quantity) {
  const std::size_t token = cursor_.at();
  const std::string text = spelled(cursor_.token()->run);
  for (std::size_t cut = utf8Length(text); cut < text.size();
       cut += utf8Length(std::string_view(text).substr(cut))) {
    auto factor = numberFactor(text.substr(0, cut), locale_, rules_);
    if (!factor && text.substr(0, cut) == "m") factor = NumberFactor{kMillion};
    auto money = factor ? currencies_.in(text.substr(cut), token) : std::nullopt;
    if (!money || quantity.money) continue;
    scale(quantity, factor->factor, factor->factor);
    takeParts(quantity, *money);
    quantity.money = std::move(money);
    cursor_.moveTo(token + 1);
    return true;
  }
  return false;
}

void SentenceAmount::takeWeight(Quantity& quantity) {
  const SentenceToken* word = cursor_.token();
  if (word == nullptr || word->kind != SentenceToken::Kind::word) return;
  const auto& tokens = cursor_.tokens();
  std::size_t at = cursor_.at();
  if (word->lower == "troy" && at + 1 < tokens.all().size()) ++at;
  const std::string& unit = tokens.all()[at].lower;
  const auto grams = gramsIn(unit);
  // A code or a sign may be called the same.
  if (!grams || (unit.size() > 2 && currencies_.at(at) && !quantity.money)) return;
  std::size_t next = at + 1;
  if (next < tokens.all().size() && tokens.all()[next].word == SentenceWord::of) ++next;
  auto metal = quantity.money ? quantity.money : currencies_.at(next);
  if (!metal || !metal->isMetal()) {
    cursor_.fail(Kind::unit, kUnit, at);
    return;
  }
  cursor_.moveTo(quantity.money ? at + 1 : metal->last);
  // Ounces as they were written, to the last digit.
  const bool isOunce = *grams == kTroyOunce;
  quantity.value = isOunce ? quantity.value : quantity.value * *grams / kTroyOunce;
  quantity.other = isOunce ? quantity.other : quantity.other * *grams / kTroyOunce;
  quantity.money = std::move(metal);
}

void SentenceAmount::takeMoney(Quantity& quantity) {
  for (int mentions = 0; mentions < 2; ++mentions) {
    const SentenceToken* const word = cursor_.token();
    if (word == nullptr || word->kind != SentenceToken::Kind::word) return;
    const bool isOf = word->word == SentenceWord::of;
    // "20% of €50"
    if (isOf && startsAt(cursor_.at() + 1)) return;
    auto money = currencies_.at(cursor_.at() + (isOf ? 1 : 0));
    if (!money) return;
    // "5 usd eur 7"
    if (!quantity.money) {
      takeParts(quantity, *money);
      cursor_.moveTo(money->last);
      quantity.money = std::move(money);
      continue;
    }
    // "USD USD" asks for the second one, "USD $" and "Poland zloty" are one.
    const bool isAsked = quantity.money->by == money->by && quantity.money->kind == money->kind;
    const bool isSame = (quantity.money->currency == money->currency && !isAsked) ||
                        currencies_.isSignOf(*money, *quantity.money);
    const bool decides = !isSame && currencies_.isSignOf(*quantity.money, *money);
    if (!isSame && !decides) {
      const bool isBefore = quantity.money->first < number_;
      if (isBefore && quantity.money->isPlain && !money->isPlain) {
        cursor_.fail(Kind::unknownCurrency, kPlainWord, quantity.money->first);
      }
      return;
    }
    const bool arePartsNew = isSame && quantity.money->parts == 1 && money->parts != 1;
    if (arePartsNew) takeParts(quantity, *money);
    if (decides || arePartsNew) quantity.money = money;
    cursor_.moveTo(money->last);
  }
}

}  // namespace fexora
