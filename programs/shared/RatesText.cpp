#include "programs/shared/RatesText.h"

#include <array>
#include <cstddef>

#include "programs/shared/RatesDay.h"

namespace fexora::program {
namespace {

Date now() {
  return Date(Platform::process().loop->wallSeconds());
}

// "3 hours old" and "3 hours ago"
std::string ageText(const Date& since, const std::string& word) {
  const Age age = ageAt(now(), since);
  const auto counted = [&](const char* unit) {
    return std::to_string(age.count) + " " + unit + (age.count == 1 ? "" : "s") + word;
  };
  switch (age.unit) {
    case Age::Unit::future:
      return "dated in the future";
    case Age::Unit::moments:
      break;
    case Age::Unit::minutes:
      return counted("minute");
    case Age::Unit::hours:
      return counted("hour");
    case Age::Unit::days:
      return counted("day");
  }
  return "less than a minute" + word;
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

std::string fromText(Freshness::Origin origin, const std::string& source) {
  const bool isNamed = !source.empty() && origin != Freshness::Origin::bundled;
  return isNamed ? ", " + oneLine(source) : originText(origin);
}

}  // namespace

std::string dayText(const Date& date) {
  constexpr std::array kMonths = {"January",   "February", "March",    "April",
                                  "May",       "June",     "July",     "August",
                                  "September", "October",  "November", "December"};
  const auto found = ratesDay(date);
  if (!found) return "an unknown day";
  const auto& day = found->day;
  const auto month = static_cast<std::size_t>(static_cast<unsigned>(day.month())) - 1;
  std::string text = std::to_string(static_cast<unsigned>(day.day())) + " " + kMonths[month];
  if (day.year() == dayAt(now()).year()) return text;
  return text + " " + std::to_string(static_cast<int>(day.year()));
}

std::string ratesText(const Freshness& fresh) {
  if (fresh.published) {
    return "rates of " + dayText(*fresh.published) + fromText(fresh.origin, fresh.source) + ", " +
           ageText(*fresh.published, " old");
  }
  if (!fresh.stored) return "rates of an unknown day";
  return "rates of an unknown day, stored on " + dayText(*fresh.stored) + ", " +
         ageText(*fresh.stored, " ago");
}

std::string rateText(const RateOrigin& of) {
  const std::string day = of.published ? dayText(*of.published) : "an unknown day";
  return "rate of " + day + fromText(of.origin, of.source);
}

}  // namespace fexora::program
