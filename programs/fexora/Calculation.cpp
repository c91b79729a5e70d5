#include "programs/fexora/Calculation.h"

#include <cmath>
#include <optional>
#include <string_view>

#include "fexora/fexora.h"

#include "programs/fexora/Failure.h"
#include "programs/shared/Sum.h"

namespace fexora::program {
namespace {

constexpr std::size_t kQuotedCharacters = 60;

// The typed text in quotes, its head where it is long.
std::string quoted(const std::string& typed) {
  const auto ends = Text::process().characterEnds(typed);
  const bool isLong = ends.size() > kQuotedCharacters;
  const std::string head = isLong ? typed.substr(0, ends[kQuotedCharacters - 1]) + "…" : typed;
  return std::string("\"").append(head).append("\"");
}

Failure rejection(const std::string& typed, const std::string& why) {
  return {Exit::usage, "amount", quoted(typed) + " " + why};
}

std::size_t charactersBefore(std::string_view text, std::size_t at) {
  return Text::process().characterCount(text.substr(0, at));
}

std::string atPlace(std::string_view typed, std::size_t at) {
  return at >= typed.size() ? " at its end"
                            : " at place " + std::to_string(charactersBefore(typed, at) + 1);
}

std::optional<double> finiteAmount(std::string_view word) {
  const auto amount = parseAmount(word);
  return amount && std::isfinite(*amount) ? amount : std::nullopt;
}

const char* describe(SumResult::Problem problem) {
  switch (problem) {
    case SumResult::Problem::unexpected:
      return "is no calculation: something is wrong";
    case SumResult::Problem::incomplete:
      return "is no calculation: a number is missing";
    case SumResult::Problem::unbalanced:
      return "is no calculation: a parenthesis has no partner";
    case SumResult::Problem::noNumber:
      return "has no finite number";
    case SumResult::Problem::divisionByZero:
      return "divides by zero";
    case SumResult::Problem::notFinite:
      return "gives no finite number";
    case SumResult::Problem::tooLong:
      return "is too long for a calculation";
    case SumResult::Problem::none:
      break;
  }
  return "cannot be calculated";
}

double calculate(const std::string& typed) {
  using Problem = SumResult::Problem;
  const SumResult sum = evaluateSum(typed, finiteAmount);
  if (sum.problem == Problem::none) return sum.value;
  std::string why = describe(sum.problem);
  if (sum.problem != Problem::notFinite && sum.problem != Problem::tooLong) {
    why += atPlace(typed, sum.place);
  }
  if (sum.problem == Problem::noNumber) why += ": " + quoted(typed.substr(sum.place, sum.length));
  throw rejection(typed, why);
}

// As the locale takes it: point and comma are one there, or neither is a mark.
std::string example() {
  Text& text = Text::process();
  const std::string locale = Locale::current();
  const std::string mark = text.decimalSeparator(locale);
  return mark == "." || mark == "," ? "12.5 or 12,5" : text.formatNumber(12.5, locale, {});
}

}  // namespace

double amountFromText(const std::string& typed) {
  const auto amount = parseAmount(typed);
  if (!amount && hasCalculation(typed)) return calculate(typed);
  if (!amount) throw rejection(typed, "is no number; expected an amount like " + example());
  if (!std::isfinite(*amount)) throw rejection(typed, "is no finite number");
  return *amount;
}

}  // namespace fexora::program
