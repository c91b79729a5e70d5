// What a source of rates published for a day, and days as text.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fexora/platform/base/Export.h"

namespace fexora {

// A day as its source names it, in no time zone. Of a source that tells only a moment it is the
// moment's day in UTC.
using Day = std::chrono::sys_days;

// "2026-09-29"; nothing for what is no day from 1900 to 2199. Any thread.
FEXORA_API std::optional<Day> dayFromIsoText(std::string_view text) noexcept;
FEXORA_API std::string isoText(Day day);
// The day in UTC of a moment in seconds since 1970, which is finite and held to the days above.
FEXORA_API Day dayOfMoment(double seconds) noexcept;

// What one source published for one day.
struct PublishedTable {
  Day day{};
  std::string source;  // of the name that people see and choose by: "ecb", "usd", "bundled"
  std::string base;    // the code that is quoted: of which one unit buys the figures
  // By code, without `base`: how many units one of `base` bought, as the decimal that was printed.
  std::vector<std::pair<std::string, std::string>> figures;
};

}  // namespace fexora
