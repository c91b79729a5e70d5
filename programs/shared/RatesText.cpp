#include "programs/shared/RatesText.h"

#include <array>
#include <cstdint>

namespace fexora::program {
namespace {

struct Unit {
  double seconds;
  const char* name;
};

constexpr std::array<Unit, 3> kUnits = {{{86400, "day"}, {3600, "hour"}, {60, "minute"}}};

// "3 hours"
std::string durationText(double seconds) {
  for (const Unit& unit : kUnits) {
    if (seconds < unit.seconds) continue;
    const auto count = static_cast<std::int64_t>(seconds / unit.seconds);
    return std::to_string(count) + " " + unit.name + (count == 1 ? "" : "s");
  }
  return "less than a minute";
}

double now() {
  return Platform::process().loop->wallSeconds();
}

// "3 hours old" and "3 hours ago"
std::string ageText(const Date& since, const char* word) {
  const double seconds = now() - since.secondsSince1970();
  return seconds < 0 ? "dated in the future" : durationText(seconds) + word;
}

const char* originText(Freshness::Origin origin) {
  switch (origin) {
    case Freshness::Origin::bundled:
      return ", bundled";
    case Freshness::Origin::service:
      return ", from the service";
    case Freshness::Origin::file:
      return ", from a file";
    case Freshness::Origin::none:
      break;
  }
  return "";
}

}  // namespace

std::string dayText(const Date& date) {
  constexpr std::array kMonths = {"January",   "February", "March",    "April",
                                  "May",       "June",     "July",     "August",
                                  "September", "October",  "November", "December"};
  const std::string text = date.isoText().value_or("");
  if (text.empty()) return "an unknown day";
  const auto month = static_cast<std::size_t>(std::stoi(text.substr(5, 2))) - 1;
  const std::string year = text.substr(0, 4);
  const std::string day = std::to_string(std::stoi(text.substr(8, 2)));
  const bool isThisYear = Date(now()).isoText().value_or("").starts_with(year);
  return day + " " + kMonths[month] + (isThisYear ? "" : " " + year);
}

std::string ratesText(const Freshness& fresh) {
  if (fresh.published) {
    return "rates of " + dayText(*fresh.published) + originText(fresh.origin) + ", " +
           ageText(*fresh.published, " old");
  }
  if (!fresh.stored) return "rates of an unknown day";
  return "rates of an unknown day, stored on " + dayText(*fresh.stored) + ", " +
         ageText(*fresh.stored, " ago");
}

}  // namespace fexora::program
