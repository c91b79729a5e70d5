// The day that a sentence about money names: "100 usd in eur on 1 march 2024", "… yesterday".
//
// At the end of it, in the words of the windows' languages: a day of ISO 8601, a day of the month
// with the month's name and the year in either order, 2024年3月1日, or yesterday; with on, am, le
// or في before it, where that is written. Without a year it is the last such day, and only after
// one of these words. At the beginning only in the form of ISO 8601, before an amount or several
// words. Days in figures alone are read in no other order of theirs: nothing is guessed. Any
// thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

struct SentenceDay {
  std::chrono::sys_days day{};
  // The bytes of the sentence without it.
  std::size_t begin = 0;
  std::size_t end = 0;
  bool isIso = false;  // in the figures of ISO 8601, which a subtraction may look like
};

// Nothing where there is none, or nothing else. `today` is what yesterday is before.
FEXORA_API std::optional<SentenceDay> sentenceDay(std::string_view text,
                                                  std::chrono::sys_days today);

// Whether a day may follow this word, in any case, at the end of a sentence: "on".
bool opensDay(std::string_view word);

}  // namespace fexora
