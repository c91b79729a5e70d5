// The lines of standard input.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "programs/fexora/EndAsked.h"

namespace fexora::program {

// Reads them one by one, each without its end (LF or CR LF). However long a line is, no more than a
// line of kMostBytes takes memory.
class InputLines {
 public:
  // `endAsked`, which outlives it, may end them early.
  explicit InputLines(const EndAsked& endAsked) : endAsked_(endAsked) {}
  static constexpr std::size_t kMostBytes = 4096;

  // The next one; of one longer than kMostBytes a beginning that is longer, too; nothing at the
  // end. Throws a Failure of kind "input" when standard input cannot be read.
  std::optional<std::string> next();
  // Of the line that next() gave last, from 1.
  std::size_t number() const { return number_; }

 private:
  bool fill();

  const EndAsked& endAsked_;
  std::array<char, 65'536> buffer_{};
  std::size_t at_ = 0;
  std::size_t end_ = 0;
  std::size_t number_ = 0;
};

}  // namespace fexora::program
