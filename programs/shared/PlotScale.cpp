#include "programs/shared/PlotScale.h"

#include <algorithm>
#include <cmath>

namespace fexora::program {

namespace chrono = std::chrono;

std::vector<double> PlotScale::numbers() const {
  std::vector<double> all;
  const double first = std::ceil(low / step - 1e-9);
  for (double number = first; number * step <= high * (1 + 1e-12); ++number) {
    all.push_back(number * step);
  }
  return all;
}

PlotScale plotScale(const std::vector<DayRate>& rates) {
  const auto less = [](const DayRate& a, const DayRate& b) { return a.rate < b.rate; };
  const auto [lowest, highest] = std::minmax_element(rates.begin(), rates.end(), less);
  PlotScale scale{lowest->rate, highest->rate};
  double range = scale.high - scale.low;
  if (!(range > scale.high * 1e-12)) {
    range = scale.high * 0.02;
    scale.low -= range / 2;
    scale.high += range / 2;
  }
  const double raw = range / 3;
  const double power = std::pow(10.0, std::floor(std::log10(raw)));
  const double times = raw / power;
  scale.step = (times < 1.5 ? 1 : times < 3.5 ? 2 : times < 7.5 ? 5 : 10) * power;
  scale.digits = std::clamp(static_cast<int>(-std::floor(std::log10(scale.step) + 1e-9)), 0, 15);
  return scale;
}

std::vector<DayMark> dayMarks(Day first, Day last, int most) {
  using Unit = DayMark::Unit;
  const chrono::year_month_day begin(first);
  std::vector<DayMark> marks;
  const auto add = [&](Day day, Unit unit) {
    if (day >= first && day <= last) marks.push_back({day, unit});
  };
  const int days = static_cast<int>((last - first).count());
  const int months = days / 30;
  const auto stepOf = [most](int count) { return std::max((count + most - 1) / most, 1); };
  if (months >= 24) {
    const int years = stepOf(months / 12);
    for (auto year = begin.year(); Day(year / 1 / 1) <= last; ++year) {
      if (static_cast<int>(year) % years == 0) add(year / 1 / 1, Unit::year);
    }
  } else if (months >= 4) {
    const chrono::months step(stepOf(months));
    for (auto month = begin.year() / begin.month(); Day(month / 1) <= last; month += step) {
      add(month / 1, Unit::month);
    }
  } else {
    const chrono::days step(stepOf(days));
    for (Day day = first; day <= last; day += step) add(day, Unit::day);
  }
  return marks;
}

}  // namespace fexora::program
