// The day that rates are of, and their age, as people are told them: in the terminal, the windows
// and the desktop's search.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "fexora/fexora.h"

namespace fexora::program {

// Most sources publish a day and no time: a date at midnight UTC names that day, everywhere. Any
// other date is a moment, told by the calendar and the clock of this machine (TZ).
struct RatesDay {
  std::chrono::year_month_day day;
  std::optional<std::chrono::minutes> time;  // since midnight; only of a moment
};
// Nothing for a date without isoText().
std::optional<RatesDay> ratesDay(const Date& date);

// The calendar's day there and then; the epoch's where it has none.
std::chrono::year_month_day dayAt(const Date& now);

// The largest unit of which there is one, and how many whole ones. None is negative: `future`.
struct Age {
  enum class Unit : std::uint8_t { future, moments, minutes, hours, days };
  Unit unit;
  std::int64_t count = 0;  // 0 for the first two
};
Age ageAt(const Date& now, const Date& since);

}  // namespace fexora::program
