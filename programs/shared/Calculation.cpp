#include "programs/shared/Calculation.h"

namespace fexora::program {
namespace {

// One currency for one number of many would be none of the sum.
std::optional<TypedAmount> numberIn(std::string_view word) {
  TypedAmount read = readAmount(word);
  if (read.kind == TypedAmount::Kind::refused || !read.currency.empty()) return std::nullopt;
  return read;
}

}  // namespace

Calculation calculate(std::string_view text) {
  Calculation result;
  result.sum = evaluateSum(text, [&](std::string_view word) -> std::optional<double> {
    auto number = numberIn(word);
    if (!number) return std::nullopt;
    const double value = number->value;
    if (number->other) result.ambiguous.push_back({std::string(word), *std::move(number)});
    return value;
  });
  if (result.sum.problem != SumResult::Problem::none || result.ambiguous.empty()) return result;
  const SumResult other = evaluateSum(text, [](std::string_view word) -> std::optional<double> {
    const auto number = numberIn(word);
    return number ? std::optional(number->other.value_or(number->value)) : std::nullopt;
  });
  const bool differs = other.problem == SumResult::Problem::none && other.value != result.sum.value;
  if (differs) result.other = other.value;
  return result;
}

}  // namespace fexora::program
