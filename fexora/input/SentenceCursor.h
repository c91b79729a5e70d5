// Where the reading of a sentence stands, and what was found wrong with it.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "fexora/catalogue/Currency.h"
#include "fexora/input/SentenceTokens.h"

namespace fexora {

struct SentenceProblem {
  enum class Kind {
    none,
    tooLong,
    notText,          // no UTF-8
    noAmount,         // nothing in it is a number or a currency
    noNumber,         // digits and marks that are no number, or more after one: see `reason`
    tooLarge,         // a number or a result beyond the doubles
    unexpected,       // something that cannot stand in a calculation at this place
    incomplete,       // the end, where a number should follow
    unbalanced,       // a parenthesis without its partner
    divisionByZero,   // the place is the operator's
    secondCurrency,   // a calculation with two
    unknownCurrency,  // a word that is no currency, or only the beginning of one
    unit,             // a unit of weight beside what is no metal
  };
  Kind kind = Kind::none;
  // Bytes of the sentence.
  std::size_t place = 0;
  std::size_t length = 0;
  // One line for a person, in English, which lives as long as the process.
  std::string_view reason;
  // What the word at this place may have meant, the nearest first; empty unless asked for.
  std::vector<CurrencyRef> near;
};

// Walks the tokens; after a problem it stands at the end, so that whoever reads on gives up. The
// first problem is the one to tell.
class SentenceCursor {
 public:
  explicit SentenceCursor(const SentenceTokens& tokens) : tokens_(tokens) {}

  const SentenceTokens& tokens() const noexcept { return tokens_; }
  std::size_t at() const noexcept { return at_; }
  void moveTo(std::size_t at) noexcept { at_ = failed() ? at_ : at; }
  bool atEnd() const noexcept { return at_ >= tokens_.all().size(); }
  // The token here or `ahead` of it; null at the end.
  const SentenceToken* token(std::size_t ahead = 0) const noexcept;
  bool looksAt(char32_t mark) const noexcept;

  bool failed() const noexcept { return problem_.kind != SentenceProblem::Kind::none; }
  const SentenceProblem& problem() const noexcept { return problem_; }
  // At this token, or at the end where there is none.
  void fail(SentenceProblem::Kind kind, std::string_view reason, std::size_t token);
  void failHere(SentenceProblem::Kind kind, std::string_view reason) { fail(kind, reason, at_); }

 private:
  const SentenceTokens& tokens_;
  std::size_t at_ = 0;
  SentenceProblem problem_;
};

}  // namespace fexora
