#include "programs/shared/Amount.h"

#include <cmath>
#include <optional>
#include <string_view>

#include "fexora/fexora.h"

#include "programs/shared/Calculation.h"
#include "programs/shared/Failure.h"

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

// A number that is read back as this one and no other, as the locale writes it.
std::string plainly(double value) {
  constexpr int kMostDigits = 15;
  return Text::process().formatNumber(value, Locale::current(), {kMostDigits, 0, false});
}

void noteReading(std::string_view typed, const TypedAmount& read, Amount& amount) {
  const std::string text = quoted(std::string(typed));
  if (read.kind == TypedAmount::Kind::ambiguous) {
    amount.notes.push_back(text + " was read as " + plainly(read.value) + "; write " +
                           plainly(*read.other) + " for the other");
  }
  const bool isChosen = read.currencyBy == TypedAmount::CurrencyBy::region ||
                        read.currencyBy == TypedAmount::CurrencyBy::trade;
  if (isChosen) {
    amount.notes.push_back("the sign in " + text + " was read as " + read.currency +
                           (read.currencyBy == TypedAmount::CurrencyBy::region
                                ? ", the currency of the locale"
                                : ", the most traded currency with it"));
  }
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

Amount calculated(const std::string& typed) {
  using Problem = SumResult::Problem;
  const std::string text = withPlainSigns(typed);
  const Calculation calculation = calculate(text);
  const SumResult& sum = calculation.sum;
  if (sum.problem == Problem::none) {
    Amount amount;
    amount.value = sum.value;
    amount.reading.kind =
        calculation.other ? TypedAmount::Kind::ambiguous : TypedAmount::Kind::exact;
    amount.reading.value = sum.value;
    amount.reading.other = calculation.other;
    for (const auto& [number, read] : calculation.ambiguous) noteReading(number, read, amount);
    return amount;
  }
  std::string why = describe(sum.problem);
  if (sum.problem != Problem::notFinite && sum.problem != Problem::tooLong) {
    why += atPlace(text, sum.place);
  }
  if (sum.problem == Problem::noNumber) why += ": " + quoted(text.substr(sum.place, sum.length));
  throw rejection(typed, why);
}

std::string example() {
  return Text::process().formatNumber(12.5, Locale::current(), {});
}

}  // namespace

Amount amountFromText(const std::string& typed) {
  const TypedAmount read = readAmount(typed);
  if (read.kind == TypedAmount::Kind::refused) {
    if (mayBeSum(withPlainSigns(typed))) return calculated(typed);
    const bool hasPlace = read.place > 0 && read.place < typed.size();
    throw rejection(typed, "is no finite number: " + std::string(read.reason) +
                               (hasPlace ? atPlace(typed, read.place) : "") +
                               "; expected an amount like " + example());
  }
  Amount amount;
  amount.value = read.value;
  amount.reading = read;
  amount.currency = read.currency;
  noteReading(typed, read, amount);
  return amount;
}

}  // namespace fexora::program
