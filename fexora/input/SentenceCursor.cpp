#include "fexora/input/SentenceCursor.h"

namespace fexora {

const SentenceToken* SentenceCursor::token(std::size_t ahead) const noexcept {
  const auto& all = tokens_.all();
  return at_ + ahead < all.size() ? &all[at_ + ahead] : nullptr;
}

bool SentenceCursor::looksAt(char32_t mark) const noexcept {
  const SentenceToken* const here = token();
  return here != nullptr && here->isMark(mark);
}

void SentenceCursor::fail(SentenceProblem::Kind kind, std::string_view reason, std::size_t token) {
  if (failed()) return;
  const auto& all = tokens_.all();
  problem_.kind = kind;
  problem_.reason = reason;
  if (token < all.size()) {
    problem_.place = all[token].begin;
    problem_.length = all[token].end - all[token].begin;
  } else {
    problem_.place = all.empty() ? 0 : all.back().end;
  }
  at_ = all.size();
}

}  // namespace fexora
