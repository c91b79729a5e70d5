#include "fexora/rates/AnswerCheck.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <unordered_map>

#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

using Reason = std::optional<std::string>;
// By code; the first of equal ones, which is the one that conversions use.
using RatesByCode = std::unordered_map<std::string_view, double>;

// Triennial Central Bank Survey of the Bank for International Settlements, 2022 and 2025: the ten
// are the same.
constexpr std::array<std::string_view, 10> kMostTraded = {"USD", "EUR", "JPY", "GBP", "CNY",
                                                          "AUD", "CAD", "CHF", "HKD", "SGD"};

RatesByCode byCode(const std::vector<USDRateRef>& rates) {
  RatesByCode found;
  found.reserve(rates.size());
  for (const USDRateRef& rate : rates) {
    if (rate != nullptr) found.try_emplace(rate->code(), rate->rate().doubleValue());
  }
  return found;
}

Reason wrongRate(const Response& answer) {
  for (const USDRateRef& rate : answer.rates()) {
    const double value = rate != nullptr ? rate->rate().doubleValue() : 0;
    if (std::isfinite(value) && value > 0) continue;
    return "the rate of " + (rate != nullptr ? rate->code() : "nothing") + " is " +
           shortestText(value);
  }
  return std::nullopt;
}

Reason wrongDollar(const RatesByCode& rates, const RatesByCode& held) {
  if (rates.empty()) return "there are none";
  const auto dollar = rates.find("USD");
  if (dollar == rates.end()) {
    return held.contains("USD") ? Reason("the US dollar is missing") : std::nullopt;
  }
  if (dollar->second != 1)
    return "one US dollar is " + shortestText(dollar->second) + " US dollars";
  return std::nullopt;
}

Reason missing(const RatesByCode& rates, const RatesByCode& held, const PlausibleLimits& limits) {
  const auto found = static_cast<double>(std::count_if(
      held.begin(), held.end(), [&](const auto& rate) { return rates.contains(rate.first); }));
  const auto all = static_cast<double>(held.size());
  if (found >= limits.heldShare * all) return std::nullopt;
  return "only " + shortestText(found) + " of the " + shortestText(all) + " currencies are there";
}

bool isTooFar(std::string_view code, double before, double now, const PlausibleLimits& limits) {
  // What is held may be anything.
  if (!std::isfinite(before) || before <= 0) return false;
  if (std::find(kMostTraded.begin(), kMostTraded.end(), code) != kMostTraded.end()) {
    return std::abs(now - before) > limits.largestTradedMove * before;
  }
  return now / before > limits.largestFactor || before / now > limits.largestFactor;
}

// In the answer's order, so that one answer always gives one reason.
Reason jump(const Response& answer, const RatesByCode& held, const PlausibleLimits& limits) {
  for (const USDRateRef& rate : answer.rates()) {
    const auto before = held.find(rate->code());
    const double now = rate->rate().doubleValue();
    if (before == held.end() || !isTooFar(rate->code(), before->second, now, limits)) continue;
    return rate->code() + " moved from " + shortestText(before->second) + " to " +
           shortestText(now);
  }
  return std::nullopt;
}

std::string dayOf(const Date& date) {
  const auto text = date.isoText();
  return text ? text->substr(0, text->find('T')) : "no day of the calendar";
}

Reason wrongDate(const Response& answer, const HeldRates& held, const PlausibleLimits& limits) {
  const auto published = answer.published();
  if (!published) return std::nullopt;
  const double moment = published->secondsSince1970();
  const double ahead = moment - held.now.secondsSince1970();
  if (ahead > limits.futureGrace) return "they are of the future, " + dayOf(*published);
  if (held.published && moment < held.published->secondsSince1970()) {
    return "they are of " + dayOf(*published) + ", older than those of " + dayOf(*held.published);
  }
  return std::nullopt;
}

Reason check(const Response& answer, const HeldRates& held, const PlausibleLimits& limits) {
  if (Reason reason = wrongRate(answer)) return reason;
  const RatesByCode rates = byCode(answer.rates());
  const RatesByCode before = byCode(held.rates);
  if (Reason reason = wrongDollar(rates, before)) return reason;
  if (Reason reason = missing(rates, before, limits)) return reason;
  if (Reason reason = jump(answer, before, limits)) return reason;
  return wrongDate(answer, held, limits);
}

}  // namespace

AnswerCheck plausible(const PlausibleLimits& limits) {
  return [limits](const Response& answer, const HeldRates& held) {
    return check(answer, held, limits);
  };
}

}  // namespace fexora
