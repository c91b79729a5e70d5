// Whether an answer may replace the rates that are held, and which of its rates may.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fexora/rates/RatesReason.h"
#include "fexora/records/Response.h"
#include "fexora/store/KeptRates.h"

namespace fexora {

// A table of rates of one day.
struct DatedRates {
  std::vector<USDRateRef> rates;
  std::optional<Date> published;
};

// What an answer is compared with.
struct HeldRates {
  std::vector<USDRateRef> rates;  // empty before the first
  std::optional<Date> published;
  Date now;
  // Of codes that `rates` lacks, the first that has one counts.
  std::vector<DatedRates> others{};
  // What earlier answers said and was left out.
  std::vector<DoubtedRate> doubted{};
};

// What a check says: nothing against an answer, or why it is not taken. A text is a host's own
// reason: one line without a full stop, fit for a person; the rate manager makes it one if it is
// not (platform/text/OneLine.h).
struct FEXORA_API AnswerVerdict {
  AnswerVerdict() = default;
  AnswerVerdict(std::nullopt_t) {}  // NOLINT(google-explicit-constructor)
  AnswerVerdict(RatesReason reason) : against(std::move(reason)) {}  // NOLINT(*-explicit-*)
  AnswerVerdict(std::optional<std::string> reason);                  // NOLINT(*-explicit-*)

  std::optional<RatesReason> against;
  // Of an answer that is taken: codes that are not taken of it, of kind `moved`, and others that
  // are, of which a person may want to know.
  std::vector<RatesReason> leftOut;
  std::vector<RatesReason> notices;
};

// What it throws counts as a reason. Main thread.
using AnswerCheck = std::function<AnswerVerdict(const Response& answer, const HeldRates& held)>;

// How far rates may move. Official money (withdrawn money and metals with it) is narrowly held, the
// narrower the fewer days lie between; crypto currencies and money without a standard leap.
struct PlausibleLimits {
  // Of the held rate, for the ten most traded currencies.
  double tradedMove = 0.1;
  double tradedMoveADay = 0.01;  // added for each day between
  double largestTradedMove = 0.5;
  // Up or down, for all other official money.
  double officialFactor = 1.5;
  double officialFactorADay = 0.02;
  double largestFactor = 10.0;
  // The rest: beyond this it is a leap, and beyond `largestLeap` left out.
  double otherFactor = 10.0;
  double otherFactorADay = 0.1;
  double largestLeap = 1000.0;
  // How many of the compared official ones, and of the rest, may leap before all are refused.
  double officialShare = 0.05;
  double otherShare = 0.25;
  // What the median may move, as a logarithm: of the most traded, and of the rest.
  double tradedMedian = 0.03;
  double tradedMedianADay = 0.0015;
  double otherMedian = 0.7;
  double otherMedianADay = 0.01;
  // What all official money may move, whatever lies between; by default the limits above count.
  std::optional<double> officialMove{};
  // Else an official code that was held and is missing is a reason. What an answer lacks stays.
  bool mayLackOfficial = true;
  double futureGrace = 24.0 * 3600;  // seconds that its date may lie ahead of the clock
};

// The ready-made check.
//   Refused: no dollar, or one that is not 1; rates that are not finite or not above 0; a code with
//   two rates; a table of another base; a date in the future, or before that of the held rates,
//   unless that lies in the future itself; many leaps at once, or a median that leaps.
//   Left out: single official codes that leap, and others that leap a thousandfold, until an answer
//   of a later day says the same.
//   Taken, with a notice: other single leaps, and what a later day has confirmed.
// Where rates are of an unknown day, thirty lie between.
FEXORA_API AnswerCheck plausible(const PlausibleLimits& limits = {});

// The ten most traded currencies, the US dollar first.
FEXORA_API std::span<const std::string_view> mostTradedCodes() noexcept;

// Whether two tables say of one code what cannot both be, by the same limits; the first such code
// of `first`. May throw std::bad_alloc.
FEXORA_API std::optional<RatesReason> contradiction(const RatesTable& first,
                                                    const RatesTable& second,
                                                    const PlausibleLimits& limits = {});

}  // namespace fexora
