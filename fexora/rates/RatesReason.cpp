#include "fexora/rates/RatesReason.h"

#include <utility>

#include "fexora/platform/text/NumberText.h"
#include "fexora/platform/text/OneLine.h"
#include "fexora/platform/values/Date.h"

namespace fexora {
namespace {

constexpr std::size_t kShownOfCode = 32;

// A code comes from outside and may be anything.
std::string shownCode(const std::string& code) {
  return code.empty() ? "nothing" : oneLine(code, kShownOfCode);
}

// Its day and its time of day, in UTC.
std::pair<std::string, std::string> momentOf(double secondsSince1970) {
  const auto text = Date(secondsSince1970).isoText();
  if (!text) return {"no day of the calendar", {}};
  const std::size_t day = text->find('T');
  return {text->substr(0, day), text->substr(day + 1)};
}

std::string olderText(double now, double before) {
  const auto [day, time] = momentOf(now);
  const auto [heldDay, heldTime] = momentOf(before);
  const std::string text = "they are of " + day + ", older than those of " + heldDay;
  return day != heldDay || time.empty() ? text : text + " (" + time + ", before " + heldTime + ")";
}

}  // namespace

std::string RatesReason::sentence() const {
  const auto figure = [](double value) { return shortestText(value); };
  switch (kind) {
    case Kind::noRates:
      return "there are none";
    case Kind::wrongRate:
      return "the rate of " + shownCode(code) + " is " + figure(now);
    case Kind::noDollar:
      return "the US dollar is missing";
    case Kind::wrongDollar:
      return "one US dollar is " + figure(now) + " US dollars";
    case Kind::otherBase:
      return "they are quoted against " + shownCode(code) + ", not against the US dollar";
    case Kind::twice:
      return shownCode(code) + " is there twice, as " + figure(before) + " and as " + figure(now);
    case Kind::moved:
      return shownCode(code) + " moved from " + figure(before) + " to " + figure(now);
    case Kind::manyMoved:
      return figure(now) + " of the " + figure(before) + " currencies leaped";
    case Kind::allMoved:
      return "nearly all moved at once, the middle one by a factor of " + fixedText(now, 2);
    case Kind::vanished:
      return shownCode(code) + " is not there any more";
    case Kind::contradiction:
      return "the sources contradict each other: " + shownCode(code) + " is " + figure(before) +
             " in one and " + figure(now) + " in another";
    case Kind::future:
      return "they are of the future, " + momentOf(now).first;
    case Kind::older:
      return olderText(now, before);
    case Kind::unchecked:
      return "the check of the rates failed";
    case Kind::other:
      return text;
  }
  return text;
}

const char* text(RatesReason::Kind kind) noexcept {
  constexpr const char* kNames[] = {"noRates",   "wrongRate", "noDollar",      "wrongDollar",
                                    "otherBase", "twice",     "moved",         "manyMoved",
                                    "allMoved",  "vanished",  "contradiction", "future",
                                    "older",     "unchecked", "other"};
  return kNames[static_cast<std::size_t>(kind)];
}

}  // namespace fexora
