#include "fexora/input/TypedNumber.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/input/Reasons.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

constexpr std::u32string_view kDecimal = U".,\u066B";
// The mark of the escudos, which have two digits after it.
constexpr char32_t kEscudo = U'$';
constexpr std::size_t kCentavoDigits = 2;
constexpr std::u32string_view kGrouping = U".,'_ \u066C";

constexpr std::string_view kWrongGroups = "the digits are not in groups of three";
constexpr std::string_view kWrongMark = "this cannot be the decimal mark here";

constexpr std::size_t kThree = 3;

bool contains(std::u32string_view all, char32_t sign) noexcept {
  return all.find(sign) != all.npos;
}

char32_t formOf(char32_t mark) noexcept {
  return typedForm(mark).value_or(mark);
}

void appendDigits(std::string& out, TypedRun run) {
  for (const TypedSymbol& symbol : run) {
    if (isTypedDigit(symbol)) out += static_cast<char>(symbol.sign);
  }
}

NumberReading rejected(std::string_view reason, const TypedSymbol& at) {
  return {0.0, {}, reason, at.place};
}

struct Rules {
  const TypedMarks& marks;
  std::string_view exponent;
};

// The marks of `whole` stand between groups.
NumberReading numberOf(TypedRun whole, TypedRun fraction, const Rules& rules) {
  std::string text = "0";
  appendDigits(text, whole);
  text += '.';
  appendDigits(text, fraction);
  if (!rules.exponent.empty()) text.append("e").append(rules.exponent);
  const double value = parseDouble(text).value_or(0.0);
  return std::isfinite(value)
             ? NumberReading{value, {}, {}, 0}
             : rejected(kNumberTooLarge, (whole.empty() ? fraction : whole).front());
}

// Where the last group of a wrong size begins, or where another mark than `mark` stands.
std::optional<std::size_t> wrongGroup(TypedRun whole, char32_t mark, std::size_t last,
                                      std::size_t others) {
  std::size_t size = last;
  std::size_t digits = 0;
  for (std::size_t i = whole.size(); i-- > 0;) {
    if (isTypedDigit(whole[i])) {
      ++digits;
      continue;
    }
    if (whole[i].sign != mark || digits != size) return i;
    digits = 0;
    size = others;
  }
  const bool fits = digits > 0 && digits <= size && whole.front().sign != U'0';
  return fits ? std::nullopt : std::optional(std::size_t{0});
}

bool isMarkSymbol(const TypedSymbol& symbol) {
  return !isTypedDigit(symbol);
}

NumberReading readGrouped(TypedRun whole, TypedRun fraction, const Rules& rules) {
  const TypedMarks& marks = rules.marks;
  const TypedSymbol& first = *std::find_if(whole.begin(), whole.end(), isMarkSymbol);
  if (!marks.canGroup(first.sign)) return rejected(kWrongMark, first);
  const auto wrong = wrongGroup(whole, first.sign, kThree, kThree);
  if (wrong && wrongGroup(whole, first.sign, marks.lastGroup(), marks.otherGroups())) {
    return rejected(kWrongGroups, whole[*wrong]);
  }
  return numberOf(whole, fraction, rules);
}

// `at` is the only mark.
NumberReading readWithOneMark(TypedRun run, std::size_t at, const Rules& rules) {
  const TypedMarks& marks = rules.marks;
  const char32_t mark = run[at].sign;
  const TypedRun fraction = run.subspan(at + 1);
  if (!marks.canBeDecimal(mark, fraction.size())) return readGrouped(run, {}, rules);
  const NumberReading decimal = numberOf(run.first(at), fraction, rules);
  const bool open = at > 0 && at <= kThree && run[0].sign != U'0' && fraction.size() == kThree;
  if (!open || !marks.canGroup(mark) || !decimal.reason.empty()) return decimal;
  const NumberReading grouped = numberOf(run, {}, rules);
  const NumberReading read = readOpen(decimal.value, grouped.value, mark, marks);
  // A thousand times as much may be too large, where it is one of the readings.
  const bool isTaken = read.other || read.value != decimal.value;
  return isTaken && !grouped.reason.empty() ? grouped : read;
}

}  // namespace

TypedMarks::TypedMarks(const NumberMarks& locale, Money money) noexcept
    : decimal_(formOf(money.isMoney ? locale.currencyDecimal : locale.decimal)),
      grouping_(formOf(money.isMoney ? locale.currencyGrouping : locale.grouping)),
      moneyGrouping_(formOf(locale.currencyGrouping)),
      sure_(!money.isMoney ||
            (locale.decimal == locale.currencyDecimal && money.digits.value_or(3) >= 3)),
      whole_(money.digits == 0),
      lastGroup_(static_cast<std::size_t>(locale.lastGroup)),
      otherGroups_(static_cast<std::size_t>(locale.otherGroups)) {}

bool TypedMarks::canBeDecimal(char32_t mark, std::size_t digits) const noexcept {
  const bool isEscudos = mark == kEscudo && digits == kCentavoDigits;
  return contains(kDecimal, mark) || mark == decimal_ || isEscudos;
}

bool TypedMarks::canEnd(char32_t mark) const noexcept {
  return mark != kEscudo && canBeDecimal(mark, 0);
}

bool TypedMarks::isMark(char32_t sign) const noexcept {
  return canBeDecimal(sign, kCentavoDigits) || canGroup(sign);
}

bool TypedMarks::canGroup(char32_t mark) const noexcept {
  return contains(kGrouping, mark) || mark == grouping_ || mark == moneyGrouping_;
}

NumberReading readOpen(double decimal, double grouped, char32_t mark, const TypedMarks& marks) {
  // With an exponent both may be too small to be told from zero.
  if (decimal == grouped) return {decimal, {}, {}, 0};
  // Programs write a point before any fraction.
  const bool mayBeProgram = mark == U'.' && !marks.isLocalesGrouping(mark);
  if (marks.isWhole() && !mayBeProgram) return {grouped, {}, {}, 0};
  if (marks.isSurelyDecimal(mark)) return {decimal, {}, {}, 0};
  if (marks.isLocalesGrouping(mark)) return {grouped, decimal, {}, 0};
  return {decimal, grouped, {}, 0};
}

NumberReading readNumber(TypedRun run, const TypedMarks& marks, std::string_view exponent) {
  const Rules rules{marks, exponent};
  const auto end = std::find_if(run.rbegin(), run.rend(), isMarkSymbol);
  if (end == run.rend()) return numberOf(run, {}, rules);
  const auto at = static_cast<std::size_t>(run.rend() - end) - 1;
  const char32_t last = run[at].sign;
  const TypedRun whole = run.first(at);
  if (std::none_of(whole.begin(), whole.end(), isMarkSymbol))
    return readWithOneMark(run, at, rules);
  const auto isOther = [last](const TypedSymbol& s) { return isMarkSymbol(s) && s.sign != last; };
  if (std::none_of(whole.begin(), whole.end(), isOther)) return readGrouped(run, {}, rules);
  const TypedRun fraction = run.subspan(at + 1);
  if (!marks.canBeDecimal(last, fraction.size())) return rejected(kWrongMark, run[at]);
  return readGrouped(whole, fraction, rules);
}

std::optional<std::string> exponentOf(TypedRun run) {
  constexpr std::size_t kMostDigits = 9;
  std::string exponent;
  if (run.empty() || (run[0].sign | 0x20U) != U'e') return std::nullopt;
  run = run.subspan(1);
  const bool isSigned = !run.empty() && (run[0].sign == U'-' || run[0].sign == U'+');
  if (isSigned && run[0].sign == U'-') exponent = "-";
  run = run.subspan(isSigned ? 1 : 0);
  if (run.empty() || run.size() > kMostDigits ||
      !std::all_of(run.begin(), run.end(), isTypedDigit)) {
    return std::nullopt;
  }
  appendDigits(exponent, run);
  return exponent;
}

std::size_t evenEnding(TypedRun run) noexcept {
  constexpr std::u32string_view kFirst = U".,/";
  constexpr std::u32string_view kDashes = U"-\u2013\u2014";
  const bool isEnding =
      run.size() >= 2 && contains(kFirst, run[0].sign) && contains(kDashes, run[1].sign);
  if (!isEnding) return 0;
  const auto endsAt = [run](std::size_t at) { return run.size() == at || !isTypedDigit(run[at]); };
  // Not the minus behind "5-".
  const bool isDouble = run.size() >= 3 && contains(kDashes, run[2].sign) && endsAt(3);
  return isDouble ? 3 : endsAt(2) ? 2 : 0;
}

TypedMarks::Money moneyOf(std::string_view code) noexcept {
  if (code.empty()) return {};
  const CurrencyFacts* const facts = currencyFacts(code);
  return {true, facts != nullptr ? facts->digits : std::nullopt};
}

}  // namespace fexora
