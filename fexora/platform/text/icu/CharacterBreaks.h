// The places in a text where a user-perceived character (an extended grapheme cluster) ends.
//
// Offsets are bytes of UTF-8. Borrows the calling thread's break iterator: one object at a time on
// a thread, used there only, while the text stays.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include <unicode/brkiter.h>
#include <unicode/utext.h>

namespace fexora {

class CharacterBreaks {
 public:
  explicit CharacterBreaks(std::string_view text);
  CharacterBreaks(const CharacterBreaks&) = delete;
  CharacterBreaks& operator=(const CharacterBreaks&) = delete;
  ~CharacterBreaks();

  // The end of the next character; nothing after the last one.
  std::optional<std::size_t> next();
  // The start and the end of the text are breaks.
  bool isBreak(std::size_t at) const;

 private:
  icu::BreakIterator* iterator_;  // null where ICU's data cannot be had: the whole is one character
  UText text_ = UTEXT_INITIALIZER;
  std::size_t size_;
  std::size_t position_ = 0;
};

}  // namespace fexora
