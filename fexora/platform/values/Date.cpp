#include "fexora/platform/values/Date.h"

#include <array>
#include <chrono>
#include <cmath>

namespace fexora {
namespace {

constexpr double kSecondsPerDay = 86400.0;
// Days from 1970-01-01 to 0001-01-01 and to 10000-01-01 in the proleptic Gregorian calendar.
constexpr double kDayOfYearOne = -719162.0;
constexpr double kDayAfterLast = 2932897.0;

void appendPadded(std::string& out, unsigned value, int width) {
  std::array<char, 8> digits{};
  for (int i = width; i-- > 0; value /= 10) {
    digits[static_cast<std::size_t>(i)] = static_cast<char>('0' + value % 10);
  }
  out.append(digits.data(), static_cast<std::size_t>(width));
}

// `count` decimal digits at the head of `text`, which is shortened by them.
std::optional<unsigned> takeDigits(std::string_view& text, std::size_t count) {
  if (text.size() < count) return std::nullopt;
  unsigned value = 0;
  for (std::size_t i = 0; i < count; ++i) {
    if (text[i] < '0' || text[i] > '9') return std::nullopt;
    value = value * 10 + static_cast<unsigned>(text[i] - '0');
  }
  text.remove_prefix(count);
  return value;
}

bool takeMark(std::string_view& text, char mark) {
  if (!text.starts_with(mark)) return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

std::optional<std::string> Date::isoText() const {
  if (!std::isfinite(seconds_)) return std::nullopt;
  const double whole = std::floor(seconds_);
  const double day = std::floor(whole / kSecondsPerDay);
  if (day < kDayOfYearOne || day >= kDayAfterLast) return std::nullopt;
  const std::chrono::year_month_day date{
      std::chrono::sys_days{std::chrono::days{static_cast<int>(day)}}};
  const auto second = static_cast<unsigned>(whole - day * kSecondsPerDay);
  std::string out;
  appendPadded(out, static_cast<unsigned>(static_cast<int>(date.year())), 4);
  out += '-';
  appendPadded(out, static_cast<unsigned>(date.month()), 2);
  out += '-';
  appendPadded(out, static_cast<unsigned>(date.day()), 2);
  out += 'T';
  appendPadded(out, second / 3600, 2);
  out += ':';
  appendPadded(out, second / 60 % 60, 2);
  out += ':';
  appendPadded(out, second % 60, 2);
  out += 'Z';
  return out;
}

std::optional<Date> Date::fromIsoText(std::string_view text) {
  const auto year = takeDigits(text, 4);
  if (!year || !takeMark(text, '-')) return std::nullopt;
  const auto month = takeDigits(text, 2);
  if (!month || !takeMark(text, '-')) return std::nullopt;
  const auto day = takeDigits(text, 2);
  if (!day || !takeMark(text, 'T')) return std::nullopt;
  const auto hour = takeDigits(text, 2);
  if (!hour || *hour > 23 || !takeMark(text, ':')) return std::nullopt;
  const auto minute = takeDigits(text, 2);
  if (!minute || *minute > 59 || !takeMark(text, ':')) return std::nullopt;
  const auto second = takeDigits(text, 2);
  if (!second || *second > 59 || text != "Z") return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year{static_cast<int>(*year)},
                                         std::chrono::month{*month}, std::chrono::day{*day}};
  if (!date.ok()) return std::nullopt;
  const auto days = std::chrono::sys_days{date}.time_since_epoch().count();
  return Date(static_cast<double>(days) * kSecondsPerDay +
              static_cast<double>(*hour * 3600 + *minute * 60 + *second));
}

}  // namespace fexora
