// The rate of a pair on a past day, and how it is asked for.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "fexora/history/PublishedTable.h"

namespace fexora {

// A pair on a past day. Which way `rate` reads: records/Rate.h.
struct PastRate {
  enum class How : std::uint8_t {
    printed,  // the source's own figure, or one divided by it
    crossed,  // two figures of one table
    byLaw,    // at least one side by the fixed ratio to its successor, which held on that day
  };
  double rate = 0;     // a printed figure as it was, else rounded to 15 digits
  Day day{};           // of the table: the day that was asked for, or the newest one before it
  std::string source;  // of the table
  How how = How::printed;
};

// "printed", "crossed" or "byLaw".
FEXORA_API const char* text(PastRate::How how) noexcept;

struct DayRate {
  Day day{};
  double rate = 0;
  std::string source;
};

struct PastQuestion {
  // Sources that count, the one that is wanted most first; empty: all, "ecb" before others, by
  // name, and the bundle last. Of one day the first that has both codes is taken.
  std::vector<std::string> sources;
  // How many days a rate may be older than the day that was asked for: a long weekend with
  // holidays is five. Beyond it there is none.
  int atMostBefore = 7;
};

// Where a source stands among those that a question wants: the smaller the more, and below zero
// where it does not count.
FEXORA_API int rankOf(const PastQuestion& question, std::string_view source) noexcept;

}  // namespace fexora
