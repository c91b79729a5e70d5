// What a picture of rates over days needs before anything is drawn: its scales, in the terminal and
// in the windows.
#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::program {

// Without a rate for longer than this nothing is known between.
inline constexpr std::chrono::days kPlotGap{7};

struct PlotScale {
  double low = 0;
  double high = 0;
  double step = 1;  // between the axis' numbers
  int digits = 0;   // of these, after the point

  // The axis' numbers, from the lowest on.
  std::vector<double> numbers() const;
};

// From the lowest to the highest of at least one rate; of one value, some room around it.
PlotScale plotScale(const std::vector<DayRate>& rates);

struct DayMark {
  enum class Unit : std::uint8_t { day, month, year };
  Day day{};
  Unit unit = Unit::day;
};

// Days that get a mark: the first ones of years or months, or days in equal distances, as the time
// between suggests, `most` of them or some more.
std::vector<DayMark> dayMarks(Day first, Day last, int most);

}  // namespace fexora::program
