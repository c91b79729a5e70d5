#include "programs/fexora/calculation/CalculationModule.h"

#include <algorithm>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include <muParser.h>

namespace fexora::program {
namespace {

struct DivisionByZero {};

double add(double a, double b) {
  return a + b;
}
double subtract(double a, double b) {
  return a - b;
}
double multiply(double a, double b) {
  return a * b;
}
double divide(double a, double b) {
  if (b == 0) throw DivisionByZero();
  return a / b;
}

class Evaluator {
 public:
  explicit Evaluator(const Formula& formula)
      : numbers_(formula.numbers, formula.numbers + formula.count) {
    parser_.ClearFun();
    parser_.ClearConst();
    // The built-in division knows no error, and comparisons are no amounts.
    parser_.EnableBuiltInOprt(false);
    parser_.DefineOprt("+", add, mu::prADD_SUB);
    parser_.DefineOprt("-", subtract, mu::prADD_SUB);
    parser_.DefineOprt("*", multiply, mu::prMUL_DIV);
    parser_.DefineOprt("/", divide, mu::prMUL_DIV);
    for (std::size_t i = 0; i < numbers_.size(); ++i) {
      parser_.DefineVar("n" + std::to_string(i), &numbers_[i]);
    }
  }

  double evaluate(std::string_view text) {
    parser_.SetExpr(std::string(text));
    return parser_.Eval();
  }

 private:
  mu::Parser parser_;
  std::vector<double> numbers_;
};

// The place of a parenthesis without its partner, or the text's size.
std::size_t unbalanced(std::string_view text) {
  std::vector<std::size_t> open;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '(') open.push_back(at);
    if (text[at] != ')') continue;
    if (open.empty()) return at;
    open.pop_back();
  }
  return open.empty() ? text.size() : open.back();
}

// What is divided by at `start`: signs, then a number or something in parentheses.
std::string_view divisor(std::string_view text, std::size_t start) {
  std::size_t end = std::min(text.find_first_not_of(" +-", start), text.size());
  if (end == text.size() || text[end] != '(') {
    end = std::min(text.find_first_of(" +-*/()", end), text.size());
    return text.substr(start, end - start);
  }
  int depth = 0;
  do {
    depth += text[end] == '(' ? 1 : text[end] == ')' ? -1 : 0;
    ++end;
  } while (depth > 0 && end < text.size());
  return text.substr(start, end - start);
}

bool isZero(Evaluator& evaluator, std::string_view text) {
  try {
    return evaluator.evaluate(text) == 0;
  } catch (const DivisionByZero&) {
    return false;  // the operator to blame stands within
  }
}

// The first operator whose divisor is zero.
std::size_t zeroDivision(Evaluator& evaluator, std::string_view text) {
  for (std::size_t at = text.find('/'); at != text.npos; at = text.find('/', at + 1)) {
    if (isZero(evaluator, divisor(text, at + 1))) return at;
  }
  return text.size();
}

Outcome refused(const mu::ParserError& error, std::size_t size) {
  const auto at = static_cast<std::size_t>(std::max(error.GetPos(), 0));
  switch (error.GetCode()) {
    case mu::ecUNEXPECTED_OPERATOR:  // its place is the one after the operator
      return {0, Problem::unexpected, at - std::min(at, error.GetToken().size())};
    case mu::ecUNEXPECTED_PARENS:
    case mu::ecUNEXPECTED_VAL:
    case mu::ecUNEXPECTED_VAR:
    case mu::ecUNASSIGNABLE_TOKEN:
      return {0, Problem::unexpected, std::min(at, size)};
    default:  // the end came too early
      return {0, Problem::incomplete, size};
  }
}

Outcome calculate(const Formula& formula) {
  const std::string_view text = formula.text;
  if (const std::size_t at = unbalanced(text); at != text.size()) {
    return {0, Problem::unbalanced, at};
  }
  Evaluator evaluator(formula);
  try {
    return {evaluator.evaluate(text), Problem::none, 0};
  } catch (const mu::ParserError& error) {
    return refused(error, text.size());
  } catch (const DivisionByZero&) {
    return {0, Problem::divisionByZero, zeroDivision(evaluator, text)};
  }
}

}  // namespace
}  // namespace fexora::program

void fexora_calculate(const fexora::program::Formula* formula, fexora::program::Outcome* outcome) {
  try {
    *outcome = fexora::program::calculate(*formula);
  } catch (const std::exception&) {
    outcome->problem = fexora::program::Problem::failed;
  }
}
