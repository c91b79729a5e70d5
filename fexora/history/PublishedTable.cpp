#include "fexora/history/PublishedTable.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace fexora {
namespace {

namespace chrono = std::chrono;

constexpr Day kFirstOfTables = chrono::year(1900) / 1 / 1;
constexpr Day kLastOfTables = chrono::year(2199) / 12 / 31;

// The whole text as a number without a sign.
std::optional<unsigned> digits(std::string_view text) noexcept {
  unsigned value = 0;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, value);
  return read.ptr == end && read.ec == std::errc() ? std::optional(value) : std::nullopt;
}

void appendTwo(std::string& out, unsigned number) {
  out += static_cast<char>('0' + number / 10);
  out += static_cast<char>('0' + number % 10);
}

}  // namespace

std::optional<Day> dayFromIsoText(std::string_view text) noexcept {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
  const auto year = digits(text.substr(0, 4));
  const auto month = digits(text.substr(5, 2));
  const auto day = digits(text.substr(8));
  if (!year || !month || !day) return std::nullopt;
  const auto date =
      chrono::year(static_cast<int>(*year)) / chrono::month(*month) / chrono::day(*day);
  if (!date.ok() || Day(date) < kFirstOfTables || Day(date) > kLastOfTables) return std::nullopt;
  return Day(date);
}

std::string isoText(Day day) {
  const chrono::year_month_day date(day);
  const auto year = static_cast<unsigned>(static_cast<int>(date.year()));
  std::string text;
  appendTwo(text, year / 100 % 100);
  appendTwo(text, year % 100);
  text += '-';
  appendTwo(text, static_cast<unsigned>(date.month()));
  text += '-';
  appendTwo(text, static_cast<unsigned>(date.day()));
  return text;
}

Day dayOfMoment(double seconds) noexcept {
  constexpr double kDaySeconds = 86400;
  const auto inDays = [](Day day) { return static_cast<double>(day.time_since_epoch().count()); };
  const double days = std::floor((std::isfinite(seconds) ? seconds : 0) / kDaySeconds);
  return Day(chrono::days(
      static_cast<int>(std::clamp(days, inDays(kFirstOfTables), inDays(kLastOfTables)))));
}

}  // namespace fexora
