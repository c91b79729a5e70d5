// The calculation that an amount may be: + - * / ^ and parentheses in the usual order, and per
// cents. A lone per cent after + or - is that share of what stands before ("100 + 10%" is 110), one
// before "of" that share of what follows; any other is a hundredth ("200 * 10%" is 20). A currency
// beside one of the numbers is that of the result.
// One thread at a time; lives as long as its sentence is read.
#pragma once

#include <optional>

#include "fexora/input/SentenceAmount.h"

namespace fexora {

class Calculation {
 public:
  Calculation(SentenceCursor& cursor, const SentenceCurrencies& currencies, SentenceAmount& amounts)
      : cursor_(cursor), currencies_(currencies), amounts_(amounts) {}

  // From here as far as the calculation goes; a sign before a currency that no number follows is
  // left. The cursor fails for one that has no finite result.
  Quantity evaluate();
  // Whether there was more than one number in it, or a sign of a calculation.
  bool hasSteps() const noexcept { return steps_ > 0; }

 private:
  Quantity sum();
  Quantity product();
  Quantity power();
  Quantity value();
  Quantity inParentheses();
  bool takeOf(const Quantity& left);
  bool takesSign(char32_t sign);
  double signAt(std::size_t token) const;
  void join(Quantity& left, const Quantity& right, bool isQuotient);

  SentenceCursor& cursor_;
  const SentenceCurrencies& currencies_;
  SentenceAmount& amounts_;
  int open_ = 0;  // parentheses
  int steps_ = 0;
};

}  // namespace fexora
