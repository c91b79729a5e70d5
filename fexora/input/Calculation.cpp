#include "fexora/input/Calculation.h"

#include <cmath>
#include <utility>

#include "fexora/input/Reasons.h"
#include "fexora/input/SentenceWords.h"

namespace fexora {
namespace {

using Kind = SentenceProblem::Kind;

constexpr std::string_view kUnexpected = "this cannot stand here in a calculation";
constexpr std::string_view kIncomplete = "a number is missing here";
constexpr std::string_view kSecond = "this is a second currency in one calculation";
constexpr std::string_view kSquare = "amounts of money cannot be multiplied";
constexpr std::string_view kByZero = "this divides by zero";
constexpr std::string_view kTooLarge = "this gives no finite number";

}  // namespace

Quantity Calculation::evaluate() {
  const std::size_t begin = cursor_.at();
  Quantity result = sum();
  if (!std::isfinite(result.value) || !std::isfinite(result.other)) {
    cursor_.fail(Kind::tooLarge, kTooLarge, begin);
  }
  return result;
}

// Takes the sign where a number follows. Before a currency alone it only stands between.
bool Calculation::takesSign(char32_t sign) {
  if (cursor_.failed() || !cursor_.looksAt(sign)) return false;
  const std::size_t next = cursor_.at() + 1;
  if (cursor_.token(1) == nullptr) {
    cursor_.fail(Kind::incomplete, kIncomplete, next);
    return false;
  }
  if (amounts_.startsAt(next)) {
    cursor_.moveTo(next);
    ++steps_;
    return true;
  }
  const bool isBetween = currencies_.at(next).has_value() || cursor_.token(1)->isMark(U'>');
  if (!isBetween || sign == U'*') cursor_.fail(Kind::unexpected, kUnexpected, next);
  return false;
}

// sum = product { ("+" | "-") product }
Quantity Calculation::sum() {
  Quantity value = product();
  while (true) {
    const bool isPlus = takesSign(U'+');
    if (!isPlus && !takesSign(U'-')) break;
    Quantity right = product();
    join(value, right, false);
    if (right.isShare) {
      right.value *= value.value;
      right.other *= value.other;
    }
    value.value = isPlus ? value.value + right.value : value.value - right.value;
    value.other = isPlus ? value.other + right.other : value.other - right.other;
    value.isShare = false;
  }
  return value;
}

// product = power { ("*" | "/" | "of") power }
Quantity Calculation::product() {
  Quantity value = power();
  while (!cursor_.failed()) {
    const std::size_t sign = cursor_.at();
    const bool isTimes = takeOf(value) || takesSign(U'*');
    if (!isTimes && !takesSign(U'/')) break;
    const Quantity right = power();
    if (isTimes && value.money && right.money) cursor_.fail(Kind::secondCurrency, kSquare, sign);
    join(value, right, !isTimes);
    value.isShare = false;
    if (!isTimes && (right.value == 0 || right.other == 0)) {
      cursor_.fail(Kind::divisionByZero, kByZero, sign);
      break;
    }
    value.value = isTimes ? value.value * right.value : value.value / right.value;
    value.other = isTimes ? value.other * right.other : value.other / right.other;
  }
  return value;
}

bool Calculation::takeOf(const Quantity& left) {
  const SentenceToken* const word = cursor_.token();
  if (!left.isShare || word == nullptr || word->kind != SentenceToken::Kind::word) return false;
  const std::size_t at = cursor_.at();
  if (word->word != SentenceWord::of) return false;
  if (!amounts_.startsAt(at + 1)) return false;
  cursor_.moveTo(at + 1);
  ++steps_;
  return true;
}

// -1 for a minus before the number or parenthesis that begins here, else 1.
double Calculation::signAt(std::size_t token) const {
  const auto& all = cursor_.tokens().all();
  while (token < all.size() && all[token].kind != SentenceToken::Kind::number &&
         !all[token].isMark(U'(')) {
    if (all[token++].isMark(U'-')) return -1;
  }
  return 1;
}

// power = value [ "^" power ] [ "%" ]
Quantity Calculation::power() {
  const double sign = signAt(cursor_.at());
  Quantity value = this->value();
  if (takesSign(U'^')) {
    const Quantity exponent = power();
    join(value, exponent, false);
    // As it is written in mathematics: -2^2 is -4, and (-2)^2 is 4.
    value.value = sign * std::pow(sign * value.value, exponent.value);
    value.other = sign * std::pow(sign * value.other, exponent.other);
    return value;
  }
  if (cursor_.looksAt(U'%')) {
    cursor_.moveTo(cursor_.at() + 1);
    ++steps_;
    value.value /= 100;
    value.other /= 100;
    value.isShare = true;
    amounts_.takeWords(value);
  }
  return value;
}

// value = [currency] "(" sum ")" [words] | operand
Quantity Calculation::value() {
  const std::size_t begin = cursor_.at();
  bool isNegative = false;
  if (cursor_.looksAt(U'-') || cursor_.looksAt(U'+')) {
    isNegative = cursor_.looksAt(U'-');
    if (cursor_.token(1) == nullptr || !cursor_.token(1)->isMark(U'(')) return amounts_.operand();
    cursor_.moveTo(begin + 1);
  }
  auto money = currencies_.at(cursor_.at());
  const bool isBefore = money && money->last < cursor_.tokens().all().size() &&
                        cursor_.tokens().all()[money->last].isMark(U'(');
  if (isBefore) cursor_.moveTo(money->last);
  if (!cursor_.looksAt(U'(')) {
    const bool isLost = cursor_.looksAt(U')') && open_ == 0;
    if (isLost) cursor_.failHere(Kind::unbalanced, kUnbalanced);
    return amounts_.operand();
  }
  Quantity inside = inParentheses();
  if (isBefore && !inside.money) {
    inside.value /= money->parts;
    inside.other /= money->parts;
    inside.money = std::move(money);
  } else if (isBefore) {
    cursor_.fail(Kind::secondCurrency, kSecond, begin);
  }
  amounts_.takeWords(inside);
  if (isNegative) inside.value = -inside.value, inside.other = -inside.other;
  return inside;
}

Quantity Calculation::inParentheses() {
  const std::size_t opening = cursor_.at();
  cursor_.moveTo(opening + 1);
  ++open_;
  ++steps_;
  Quantity inside = sum();
  --open_;
  inside.isShare = false;
  const SentenceToken* const next = cursor_.token();
  if (next == nullptr || next->kind == SentenceToken::Kind::word) {
    cursor_.fail(Kind::unbalanced, kUnbalanced, opening);
  } else if (!cursor_.looksAt(U')')) {
    cursor_.failHere(Kind::unexpected, kUnexpected);
  }
  cursor_.moveTo(cursor_.at() + 1);
  return inside;
}

void Calculation::join(Quantity& left, const Quantity& right, bool isQuotient) {
  if (!right.money) return;
  if (left.money && left.money->currency != right.money->currency) {
    cursor_.fail(Kind::secondCurrency, kSecond, right.money->first);
  }
  const bool isRatio = isQuotient && left.money;
  left.money = isRatio ? std::nullopt : right.money;
}

}  // namespace fexora
