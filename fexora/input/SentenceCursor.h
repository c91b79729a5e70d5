// Where the reading of a sentence stands, and the first thing that was found wrong with it.
#pragma once

#include <cstddef>
#include <string_view>

#include "fexora/input/SentenceProblem.h"
#include "fexora/input/SentenceTokens.h"

namespace fexora {

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
