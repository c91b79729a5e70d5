#include "programs/shared/Sum.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace fexora::program {
namespace {

using Problem = SumResult::Problem;

// Much more than anyone types, and little enough for any nesting.
constexpr std::size_t kMostBytes = 1000;
constexpr std::string_view kSigns = "+-*/()%";
constexpr std::string_view kNumberEnds = " +-*/()%";

// One function for each rule of the grammar. After a problem every one of them gives up.
class Descent {
 public:
  Descent(std::string_view text, const NumberReader& number) : text_(text), number_(number) {}

  SumResult evaluate() {
    const double value = sum();
    if (!failed() && !atEnd()) fail(looksAt(')') ? Problem::unbalanced : Problem::unexpected, at_);
    if (!failed() && !std::isfinite(value)) fail(Problem::notFinite, 0);
    if (!failed()) result_.value = value;
    return result_;
  }

 private:
  // sum = product { ("+" | "-") product }
  double sum() {
    double value = product();
    while (!failed() && (looksAt('+') || looksAt('-'))) {
      const bool isPlus = text_[at_++] == '+';
      const double other = product();
      const double added = share_ ? value * *share_ / 100 : other;
      value = isPlus ? value + added : value - added;
    }
    share_.reset();
    return value;
  }

  // product = signedValue { ("*" | "/") signedValue }
  double product() {
    double value = signedValue();
    while (!failed() && (looksAt('*') || looksAt('/'))) {
      const std::size_t sign = at_++;
      const double other = signedValue();
      share_.reset();
      if (text_[sign] == '/' && other == 0) fail(Problem::divisionByZero, sign);
      value = text_[sign] == '*' ? value * other : value / other;
    }
    return value;
  }

  // signedValue = [ "+" | "-" ] value [ "%" ]
  double signedValue() {
    const bool isNegative = looksAt('-');
    if (isNegative || looksAt('+')) ++at_;
    const double read = isNegative ? -value() : value();
    share_.reset();
    if (failed() || !looksAt('%')) return read;
    ++at_;
    share_ = read;
    return read / 100;
  }

  // value = "(" sum ")" | number
  double value() {
    if (looksAt('(')) return inParentheses();
    if (atEnd()) return fail(Problem::incomplete, text_.size());
    if (looksAt(')') && open_ == 0) return fail(Problem::unbalanced, at_);
    if (kSigns.find(text_[at_]) != kSigns.npos) return fail(Problem::unexpected, at_);
    const std::size_t begin = at_;
    at_ = std::min(text_.find_first_of(kNumberEnds, begin), text_.size());
    const auto number = number_(text_.substr(begin, at_ - begin));
    return number ? *number : fail(Problem::noNumber, begin, at_ - begin);
  }

  double inParentheses() {
    const std::size_t opening = at_++;
    ++open_;
    const double inside = sum();
    --open_;
    if (failed()) return 0;
    if (atEnd()) return fail(Problem::unbalanced, opening);
    if (!looksAt(')')) return fail(Problem::unexpected, at_);
    ++at_;
    return inside;
  }

  // The first problem is the one to tell.
  double fail(Problem problem, std::size_t place, std::size_t length = 0) {
    if (!failed()) result_ = {0, problem, place, length};
    return 0;
  }
  bool failed() const { return result_.problem != Problem::none; }
  bool atEnd() {
    at_ = std::min(text_.find_first_not_of(' ', at_), text_.size());
    return at_ == text_.size();
  }
  bool looksAt(char sign) { return !atEnd() && text_[at_] == sign; }

  std::string_view text_;
  const NumberReader& number_;
  std::size_t at_ = 0;
  int open_ = 0;                 // parentheses
  std::optional<double> share_;  // in per cent, when that is all that the last product was
  SumResult result_;
};

}  // namespace

std::string withPlainSigns(std::string_view text) {
  constexpr std::array<std::pair<std::string_view, char>, 3> kTyped = {
      {{"\u00D7", '*'}, {"\u00F7", '/'}, {"\u2212", '-'}}};
  std::string plain(text);
  for (const auto& [sign, ascii] : kTyped) {
    for (auto at = plain.find(sign); at != plain.npos; at = plain.find(sign, at)) {
      plain.replace(at, sign.size(), 1, ascii);
    }
  }
  return plain;
}

bool mayBeSum(std::string_view text) {
  return text.find_first_of(kSigns) != text.npos;
}

SumResult evaluateSum(std::string_view text, const NumberReader& number) {
  if (text.size() > kMostBytes) return {0, Problem::tooLong, 0, 0};
  return Descent(text, number).evaluate();
}

}  // namespace fexora::program
