#include "programs/shared/RatesDay.h"

#include <cmath>
#include <ctime>

namespace fexora::program {
namespace {

using std::chrono::days;
using std::chrono::minutes;
using std::chrono::seconds;
using std::chrono::sys_days;

RatesDay dayIn(seconds sinceEpoch) {
  const auto day = std::chrono::floor<days>(sinceEpoch);
  return {sys_days(day), std::chrono::floor<minutes>(sinceEpoch - day)};
}

// What a clock on the wall of this machine says, as seconds since its own 1970.
seconds onTheWall(seconds moment) {
  const auto time = static_cast<std::time_t>(moment.count());
  std::tm local = {};
  // Without it a change of TZ in the process goes unseen.
  tzset();
  return localtime_r(&time, &local) == nullptr ? moment : moment + seconds(local.tm_gmtoff);
}

}  // namespace

std::optional<RatesDay> ratesDay(const Date& date) {
  if (!date.isoText()) return std::nullopt;
  const seconds moment(static_cast<std::int64_t>(std::floor(date.secondsSince1970())));
  if (moment % days(1) == seconds(0))
    return RatesDay{sys_days(std::chrono::floor<days>(moment)), {}};
  return dayIn(onTheWall(moment));
}

std::chrono::year_month_day dayAt(const Date& now) {
  if (!now.isoText()) return sys_days();
  return dayIn(onTheWall(seconds(static_cast<std::int64_t>(now.secondsSince1970())))).day;
}

Age ageAt(const Date& now, const Date& since) {
  constexpr std::int64_t kMinute = 60;
  constexpr std::int64_t kHour = 60 * kMinute;
  constexpr std::int64_t kDay = 24 * kHour;
  constexpr double kMost = 1e15;  // seconds, and thirty million years
  const double passed = now.secondsSince1970() - since.secondsSince1970();
  if (passed < 0) return {Age::Unit::future};
  const auto whole = static_cast<std::int64_t>(passed < kMost ? passed : kMost);
  if (whole >= kDay) return {Age::Unit::days, whole / kDay};
  if (whole >= kHour) return {Age::Unit::hours, whole / kHour};
  if (whole >= kMinute) return {Age::Unit::minutes, whole / kMinute};
  return {Age::Unit::moments};
}

}  // namespace fexora::program
