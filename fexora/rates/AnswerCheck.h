// Whether an answer may replace the rates that are held.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "fexora/records/Response.h"

namespace fexora {

// What an answer is compared with.
struct HeldRates {
  std::vector<USDRateRef> rates;  // empty before the first
  std::optional<Date> published;
  Date now;
};

// Nothing when the answer may be taken, else why not: one line without a full stop, fit for a
// person; the rate manager makes it one if it is not (platform/text/OneLine.h). What it throws
// counts as a reason. Main thread.
using AnswerCheck =
    std::function<std::optional<std::string>(const Response& answer, const HeldRates& held)>;

struct PlausibleLimits {
  double heldShare = 0.9;            // of the held codes, that the answer must have
  double largestTradedMove = 0.5;    // of the held rate, for the ten most traded currencies
  double largestFactor = 10.0;       // up or down, for every other currency
  double futureGrace = 24.0 * 3600;  // seconds that its date may lie ahead of the clock
};

// The ready-made check. The dollar is there, and 1; all rates are finite and above 0; none has
// moved further than the limits from the held one, nor is missing beyond them; the answer is not
// older than the held rates, as far as both are dated, and not from the future.
FEXORA_API AnswerCheck plausible(const PlausibleLimits& limits = {});

}  // namespace fexora
