// The numbers of a sentence, each with the words that belong to it: "1.5 million yen", "$5k",
// "10 g of gold".
// One thread at a time; lives as long as its sentence is read.
#pragma once

#include <optional>
#include <vector>

#include "fexora/input/SentenceCurrencies.h"
#include "fexora/input/SentenceCursor.h"

namespace fexora {

// An amount, or a part of a calculation, by the first and by the second reading of each number.
struct Quantity {
  double value = 0;
  double other = 0;
  std::optional<Mention> money;
  bool isShare = false;  // per cents, of which `value` is the hundredth
};

class SentenceAmount {
 public:
  // A number with two readings, by its tokens.
  struct Open {
    std::size_t first;
    std::size_t last;
    double value;
    double other;
  };

  SentenceAmount(SentenceCursor& cursor, const SentenceCurrencies& currencies,
                 const NumberMarks& marks, std::string_view locale, Text& rules)
      : cursor_(cursor), currencies_(currencies), marks_(marks), locale_(locale), rules_(rules) {}

  // A number here, with a currency before or after it and a minus in any of the usual places. Fails
  // where there is none.
  Quantity operand();
  // What may follow a number or a parenthesis: words that make it larger, a unit of weight, its
  // currency.
  void takeWords(Quantity& quantity);
  // A currency before a parenthesis.
  std::optional<Mention> takeCurrency();
  // Whether a number, a parenthesis or either with a currency or a sign before it begins at the
  // token.
  bool startsAt(std::size_t token) const;

  const std::vector<Open>& open() const noexcept { return open_; }

 private:
  bool takeMinus();
  bool takeTrailingMinus(Quantity& quantity);  // true: it was a hyphen
  bool looksAtHyphen(bool isBeforeMoney) const;
  void takeNumber(const SentenceToken& number, Quantity& quantity);
  void takeFactors(Quantity& quantity);
  bool takeGluedFactor(Quantity& quantity);
  void takeMoney(Quantity& quantity);
  void takeWeight(Quantity& quantity);
  static void scale(Quantity& quantity, double factor, double other);
  static void takeParts(Quantity& quantity, const Mention& money);

  SentenceCursor& cursor_;
  const SentenceCurrencies& currencies_;
  const NumberMarks& marks_;
  std::string_view locale_;
  Text& rules_;
  std::size_t number_ = 0;  // the token of the last one
  std::vector<Open> open_;
};

}  // namespace fexora
