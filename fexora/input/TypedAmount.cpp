#include "fexora/input/TypedAmount.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "fexora/input/Reasons.h"
#include "fexora/input/TypedNumber.h"
#include "fexora/input/TypedSides.h"
#include "fexora/input/TypedSymbols.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/text/AmountParsing.h"
#include "fexora/platform/text/PlainAmount.h"
#include "fexora/platform/text/Utf8.h"

namespace fexora {
namespace {

using CurrencyBy = TypedAmount::CurrencyBy;

constexpr std::string_view kAmountTooLong = "this is too long for an amount";
constexpr std::string_view kNoNumber = "there is no number in it";

TypedAmount refused(std::string_view reason, std::size_t place) {
  TypedAmount amount;
  amount.reason = reason;
  amount.place = place;
  return amount;
}

TypedAmount exact(double value) {
  TypedAmount amount;
  amount.kind = TypedAmount::Kind::exact;
  amount.value = value;
  return amount;
}

TypedAmount amountOf(const NumberReading& number) {
  if (!number.reason.empty()) return refused(number.reason, number.place);
  TypedAmount amount = exact(number.value);
  if (number.other) amount.kind = TypedAmount::Kind::ambiguous;
  amount.other = number.other;
  return amount;
}

// Whether it is the one form of a plain amount whose mark may stand between groups.
bool isOpen(const PlainAmount& plain, std::string_view text) {
  return plain.fraction == 3 && plain.whole <= 3 && text.front() != '0';
}

CurrencyBy byOf(const TypedSides& sides) {
  if (sides.currency().empty()) return CurrencyBy::none;
  if (sides.byCode()) return CurrencyBy::code;
  switch (sides.why()) {
    case SignReading::Why::region:
      return CurrencyBy::region;
    case SignReading::Why::trade:
      return CurrencyBy::trade;
    default:
      return CurrencyBy::sign;
  }
}

struct Parts {
  TypedRun before;
  TypedRun number;  // from its first digit to its last
  TypedRun after;
};

bool isBlankSymbol(const TypedSymbol& symbol) {
  return symbol.sign == U' ';
}

bool isLetter(const TypedSymbol& symbol) {
  return (symbol.sign | 0x20U) >= U'a' && (symbol.sign | 0x20U) <= U'z';
}

// As in "5 1INCH": its digit is none of the number's.
bool isCodeWithDigit(TypedRun word) {
  return std::any_of(word.begin(), word.end(), isLetter) &&
         std::any_of(word.begin(), word.end(), isTypedDigit) && !typedCode(spelled(word)).empty();
}

// As in "5K".
bool isThousand(TypedRun side) {
  return side.size() == 1 && side.front().sign == U'K';
}

// The places of what lies between the codes with a digit at either end.
std::pair<std::size_t, std::size_t> withoutSuchCodes(TypedRun run) {
  const auto first =
      static_cast<std::size_t>(std::find_if(run.begin(), run.end(), isBlankSymbol) - run.begin());
  const auto last = static_cast<std::size_t>(std::find_if(run.rbegin(), run.rend(), isBlankSymbol) -
                                             run.rbegin());
  const bool atFront = first < run.size() && isCodeWithDigit(run.first(first));
  const bool atBack = last < run.size() && isCodeWithDigit(run.last(last));
  return {atFront ? first : 0, atBack ? run.size() - last : run.size()};
}

Parts partsOf(TypedRun run) {
  const auto [begin, end] = withoutSuchCodes(run);
  const TypedRun middle = run.subspan(begin, std::max(begin, end) - begin);
  const auto first = static_cast<std::size_t>(
      std::find_if(middle.begin(), middle.end(), isTypedDigit) - middle.begin());
  const auto afterLast = static_cast<std::size_t>(
      middle.rend() - std::find_if(middle.rbegin(), middle.rend(), isTypedDigit));
  if (first == middle.size()) return {run, {}, {}};
  return {run.first(begin + first), middle.subspan(first, afterLast - first),
          run.subspan(begin + afterLast)};
}

// Takes a mark at the number's beginning along, where the side is none with it.
bool takeBefore(Parts& parts, TypedSides& sides, const TypedMarks& marks) {
  constexpr std::u32string_view kSigns = U"-+";
  const TypedRun side = parts.before;
  if (sides.takeSigned(side, kSigns)) return true;
  const bool isNumbers = marks.canEnd(side.back().sign) &&
                         (side.size() < 2 || !isTypedLetter(side[side.size() - 2].sign));
  if (!isNumbers) return false;
  parts.number = {parts.number.data() - 1, parts.number.size() + 1};
  return sides.takeSigned(side.first(side.size() - 1), kSigns);
}

bool takeAfter(Parts& parts, TypedSides& sides, const TypedMarks& marks) {
  const TypedRun side = parts.after;
  if (isThousand(side)) return false;
  if (const std::size_t ending = evenEnding(side); ending > 0) {
    return sides.takeCurrency(side.subspan(ending));
  }
  if (sides.takeSigned(side, U"-")) return true;
  if (!marks.canEnd(side.front().sign)) return false;
  parts.number = {parts.number.data(), parts.number.size() + 1};
  return sides.takeCurrency(side.subspan(1));
}

std::size_t placeOf(TypedRun side) {
  return trimmed(side).front().place;
}

// Whether it may be part of one of the locales' exponents, such as "×10^3".
bool isOfExponent(const TypedSymbol& symbol) {
  constexpr std::u32string_view kSigns = U"\u00D7\u00B7^+-";
  return isTypedLetter(symbol.sign) || kSigns.find(symbol.sign) != kSigns.npos;
}

// What is no row of digits and marks may be a number with an exponent.
TypedAmount withExponent(const Parts& parts, std::string_view number, const TypedMarks& marks,
                         std::string_view locale, Text& rules) {
  const auto isForeign = [&](const TypedSymbol& s) {
    return !isTypedDigit(s) && !marks.isMark(s.sign);
  };
  const TypedRun run = parts.number;
  const auto foreign = std::find_if(run.begin(), run.end(), isForeign);
  const auto mantissa = static_cast<std::size_t>(foreign - run.begin());
  const auto exponent = exponentOf(run.subspan(mantissa));
  if (mantissa > 0 && exponent) return amountOf(readNumber(run.first(mantissa), marks, *exponent));
  const bool mayBe = std::all_of(foreign, run.end(), [&](const TypedSymbol& symbol) {
    return !isForeign(symbol) || isOfExponent(symbol);
  });
  const auto value = mayBe ? parseAmountIn(locale, number, rules) : std::nullopt;
  if (!value) return refused(kForeign, foreign->place);
  return std::isfinite(*value) ? exact(*value) : refused(kNumberTooLarge, 0);
}

TypedAmount negated(TypedAmount amount) {
  amount.value = -amount.value;
  if (amount.other) amount.other = -*amount.other;
  return amount;
}

TypedAmount inShares(TypedAmount amount, double share) {
  if (share == 1.0) return amount;
  // As a quotient, which is nearer than the product with a share that no double is.
  const double parts = std::round(1 / share);
  amount.share = share;
  amount.value /= parts;
  if (amount.other) amount.other = *amount.other / parts;
  return amount;
}

TypedAmount readTyped(std::string_view text, std::string_view locale, Text& rules) {
  const TypedSymbols typed = typedSymbols(text);
  if (typed.broken) return refused(kBroken, *typed.broken);
  Parts parts = partsOf(trimmed(typed.symbols));
  if (parts.number.empty()) return refused(kNoNumber, 0);
  const NumberMarks localesMarks = rules.numberMarks(locale);
  TypedMarks marks(localesMarks, {});
  TypedSides sides(locale);
  if (!takeBefore(parts, sides, marks)) return refused(sides.reason(), placeOf(parts.before));
  if (!takeAfter(parts, sides, marks)) return refused(sides.reason(), placeOf(parts.after));
  marks = TypedMarks(localesMarks, moneyOf(sides.currency()));
  const std::size_t begin = parts.number.front().place;
  const std::size_t last = parts.number.back().place;
  const std::size_t end = last + utf8Length(text.substr(last));
  const bool isPlain =
      std::all_of(parts.number.begin(), parts.number.end(),
                  [&](const TypedSymbol& s) { return isTypedDigit(s) || marks.isMark(s.sign); });
  TypedAmount amount =
      isPlain ? amountOf(readNumber(parts.number, marks))
              : withExponent(parts, text.substr(begin, end - begin), marks, locale, rules);
  if (amount.kind == TypedAmount::Kind::refused) return amount;
  if (sides.isNegative()) amount = negated(std::move(amount));
  amount.currency = sides.currency();
  amount.currencyBy = byOf(sides);
  return inShares(std::move(amount), sides.share());
}

}  // namespace

TypedAmount readAmount(std::string_view text, std::string_view locale, Text& rules) {
  if (text.size() > limits::kAmountBytes) return refused(kAmountTooLong, limits::kAmountBytes);
  const auto plain = plainAmount(text);
  if (!plain || text.empty()) return readTyped(text, locale, rules);
  // The mark of any other plain amount is the decimal mark everywhere.
  if (!isOpen(*plain, text)) return exact(plain->value);
  const auto mark = static_cast<char32_t>(text[plain->whole]);
  const TypedMarks marks(rules.numberMarks(locale), {});
  return amountOf(readOpen(plain->value, plain->digits, mark, marks));
}

}  // namespace fexora
