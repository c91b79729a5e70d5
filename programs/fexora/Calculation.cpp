#include "programs/fexora/Calculation.h"

#include <cmath>
#include <string_view>
#include <vector>

#include "fexora/fexora.h"
#include "fexora/platform/foundation/Library.h"

#include "programs/fexora/Failure.h"
#include "programs/fexora/calculation/CalculationModule.h"

namespace fexora::program {
namespace {

// Much more than anyone types, and little enough for any nesting.
constexpr std::size_t kMostBytes = 1000;
constexpr std::size_t kQuotedCharacters = 60;
constexpr std::string_view kSigns = "+-*/()";

// The typed text in quotes, its head where it is long.
std::string quoted(const std::string& typed) {
  const auto ends = Text::process().characterEnds(typed);
  if (ends.size() <= kQuotedCharacters) return "\"" + typed + "\"";
  return "\"" + typed.substr(0, ends[kQuotedCharacters - 1]) + "…\"";
}

Failure refusal(const std::string& typed, const std::string& why) {
  return {Exit::usage, "amount", quoted(typed) + " " + why};
}

std::size_t charactersBefore(std::string_view text, std::size_t at) {
  return Text::process().characterCount(text.substr(0, at));
}

std::string atPlace(std::string_view typed, std::size_t at) {
  return at >= typed.size() ? " at its end"
                            : " at place " + std::to_string(charactersBefore(typed, at) + 1);
}

// The typed text with a name for each number, as the module takes it.
struct Named {
  std::string text;
  std::vector<double> numbers;
  std::vector<std::size_t> places;  // of each byte of `text`, in the typed one

  void append(std::string_view piece, std::size_t place) {
    text += piece;
    places.insert(places.end(), piece.size(), place);
  }
};

Named withNamedNumbers(const std::string& typed) {
  Named named;
  for (std::size_t at = 0; at < typed.size();) {
    if (typed[at] == ' ' || kSigns.find(typed[at]) != kSigns.npos) {
      named.append(std::string_view(typed).substr(at, 1), at);
      ++at;
      continue;
    }
    const std::size_t end = std::min(typed.find_first_of(" +-*/()", at), typed.size());
    const std::string number = typed.substr(at, end - at);
    const auto value = parseAmount(number);
    if (!value || !std::isfinite(*value)) {
      throw refusal(typed, "has no finite number" + atPlace(typed, at) + ": " + quoted(number));
    }
    named.append("n" + std::to_string(named.numbers.size()), at);
    named.numbers.push_back(*value);
    at = end;
  }
  return named;
}

// The module lies beside the library's own.
decltype(&fexora_calculate) openCalculation(const std::string& typed) {
  std::string reason;
  void* const entry = moduleEntry("calculation", "fexora_calculate", reason);
  if (entry != nullptr) return reinterpret_cast<decltype(&fexora_calculate)>(entry);
  throw refusal(typed, "is a calculation, which cannot be evaluated here: " + reason);
}

const char* describe(Problem problem) {
  switch (problem) {
    case Problem::unexpected:
      return "is no calculation: something is wrong";
    case Problem::incomplete:
      return "is no calculation: a number is missing";
    case Problem::unbalanced:
      return "is no calculation: a parenthesis has no partner";
    case Problem::divisionByZero:
      return "divides by zero";
    default:
      return "cannot be calculated";
  }
}

double calculate(const std::string& typed) {
  if (typed.size() > kMostBytes) throw refusal(typed, "is too long for a calculation");
  const Named named = withNamedNumbers(typed);
  const Formula formula{named.text.c_str(), named.numbers.data(), named.numbers.size()};
  Outcome outcome;
  openCalculation(typed)(&formula, &outcome);
  if (outcome.problem == Problem::failed) throw refusal(typed, describe(outcome.problem));
  if (outcome.problem != Problem::none) {
    const std::size_t place =
        outcome.place < named.places.size() ? named.places[outcome.place] : typed.size();
    throw refusal(typed, describe(outcome.problem) + atPlace(typed, place));
  }
  if (!std::isfinite(outcome.value)) throw refusal(typed, "gives no finite number");
  return outcome.value;
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
  if (!amount) throw refusal(typed, "is no number; expected an amount like " + example());
  if (!std::isfinite(*amount)) throw refusal(typed, "is no finite number");
  return *amount;
}

}  // namespace fexora::program
