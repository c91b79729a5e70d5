// A sentence about money, cut into numbers, words and single marks. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/input/SentenceWords.h"
#include "fexora/input/TypedNumber.h"
#include "fexora/input/TypedSymbols.h"

namespace fexora {

struct SentenceToken {
  enum class Kind : std::uint8_t {
    number,  // digits and the marks between and after them
    word,    // letters, or a sign of money; the dot of an abbreviation belongs to it
    mark,    // one other symbol
  };
  Kind kind{};
  bool isGlued = false;  // to the token before it: without a blank
  char32_t sign = 0;     // of a mark: "*" for U+00D7, "/" for U+00F7
  TypedRun run;          // of a number without what follows here
  std::string exponent;  // of a number, see exponentOf()
  std::string lower;     // of a word: in small ASCII letters, without the dot of an abbreviation
  SentenceWord word = SentenceWord::none;
  std::size_t begin = 0;  // bytes of the sentence
  std::size_t end = 0;

  bool isMark(char32_t other) const noexcept { return kind == Kind::mark && sign == other; }
};

class SentenceTokens {
 public:
  SentenceTokens(std::string_view text, const NumberMarks& marks);
  SentenceTokens(const SentenceTokens&) = delete;
  SentenceTokens& operator=(const SentenceTokens&) = delete;

  const std::vector<SentenceToken>& all() const noexcept { return tokens_; }
  // Where the text is no UTF-8.
  std::optional<std::size_t> broken() const noexcept { return symbols_.broken; }
  // The text of the tokens from `first` up to, not including, `last`.
  std::string_view textOf(std::size_t first, std::size_t last) const noexcept;

 private:
  void cut();
  bool takeNumber();
  bool takeSign();
  bool takeWord();
  void add(SentenceToken::Kind kind, std::size_t length);
  std::size_t numberLength() const;
  bool isDigit(std::size_t at) const noexcept;
  bool isLetter(std::size_t at) const noexcept;
  char32_t sign(std::size_t at) const noexcept;

  std::string_view text_;
  TypedMarks marks_;
  bool hasPairs_;  // groups of two digits
  TypedSymbols symbols_;
  std::vector<SentenceToken> tokens_;
  std::size_t at_ = 0;
  bool isGlued_ = false;
};

}  // namespace fexora
