#include "fexora/rates/AnswerCheck.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "fexora/catalogue/CurrencyFacts.h"

namespace fexora {
namespace {

using Fault = RatesReason::Kind;
using Reason = std::optional<RatesReason>;

constexpr double kDay = 86'400;
constexpr double kUnknownDays = 30;
constexpr double kWeek = 7;
// Fewer are no group.
constexpr std::size_t kFewest = 5;

// Triennial Central Bank Survey of the Bank for International Settlements, 2022 and 2025: the ten
// are the same.
constexpr std::array<std::string_view, 10> kTenTraded = {"USD", "EUR", "JPY", "GBP", "CNY",
                                                         "AUD", "CAD", "CHF", "HKD", "SGD"};

enum class Group : std::uint8_t { traded, official, other };

bool isMostTraded(std::string_view code) {
  return std::find(kTenTraded.begin(), kTenTraded.end(), code) != kTenTraded.end();
}

Group groupOf(std::string_view code) {
  if (isMostTraded(code)) return Group::traded;
  const CurrencyFacts* const facts = currencyFacts(code);
  const bool isFree =
      facts == nullptr || facts->kind == CurrencyKind::crypto || facts->kind == CurrencyKind::local;
  return isFree ? Group::other : Group::official;
}

bool isRate(double value) {
  return std::isfinite(value) && value > 0;
}

// Above 1, whichever way it went.
double factorBetween(double before, double now) {
  return std::max(now / before, before / now);
}

double daysBetween(const std::optional<Date>& before, const std::optional<Date>& now) {
  if (!now || !before) return kUnknownDays;
  const double days = std::abs(now->secondsSince1970() - before->secondsSince1970()) / kDay;
  return std::clamp(days, 1.0, 36'500.0);
}

bool leaps(Group group, double before, double now, double days, const PlausibleLimits& limits) {
  const bool hasOneMove = group != Group::other && limits.officialMove;
  if (group == Group::traded || hasOneMove) {
    const double most = hasOneMove ? *limits.officialMove
                                   : std::min(limits.largestTradedMove,
                                              limits.tradedMove + limits.tradedMoveADay * days);
    return std::abs(now - before) > most * before;
  }
  const double most =
      group == Group::other
          ? std::min(limits.largestLeap, limits.otherFactor + limits.otherFactorADay * days)
          : std::min(limits.largestFactor,
                     limits.officialFactor + limits.officialFactorADay * days);
  return factorBetween(before, now) > most;
}

// What one answer and what is held come to.
class Comparison {
 public:
  Comparison(const Response& answer, const HeldRates& held, const PlausibleLimits& limits)
      : answer_(answer), held_(held), limits_(limits), published_(answer.published()) {}

  AnswerVerdict verdict() {
    Reason reason = readAnswer();
    if (!reason) reason = wrongDollar();
    if (!reason) reason = wrongDate();
    if (!reason) {
      readHeld();
      compare();
      reason = tooMany();
      if (!reason) reason = vanished();
    }
    if (reason) return *std::move(reason);
    return std::move(verdict_);
  }

 private:
  struct Before {
    double rate = 0;
    std::optional<Date> published;
  };

  Reason readAnswer() {
    for (const USDRateRef& rate : answer_.rates()) {
      if (rate == nullptr) return RatesReason{Fault::wrongRate, {}, 0, 0, {}};
      const double value = rate->rate().doubleValue();
      if (!isRate(value)) return RatesReason{Fault::wrongRate, rate->code(), 0, value, {}};
      const auto [at, isNew] = rates_.try_emplace(rate->code(), value);
      if (!isNew && at->second != value) {
        return RatesReason{Fault::twice, rate->code(), at->second, value, {}};
      }
    }
    return std::nullopt;
  }

  Reason wrongDollar() const {
    if (rates_.empty()) return RatesReason{Fault::noRates, {}, 0, 0, {}};
    const auto dollar = rates_.find("USD");
    const bool isThere = dollar != rates_.end();
    if (isThere && dollar->second == 1) {
      return rates_.size() > 1 ? Reason() : RatesReason{Fault::noRates, {}, 0, 0, {}};
    }
    for (const std::string_view code : kTenTraded) {
      const auto base = rates_.find(code);
      if (base == rates_.end() || base->second != 1) continue;
      return RatesReason{Fault::otherBase, std::string(code), 0, 0, {}};
    }
    if (!isThere) return RatesReason{Fault::noDollar, {}, 0, 0, {}};
    return RatesReason{Fault::wrongDollar, "USD", 0, dollar->second, {}};
  }

  bool isOfTheFuture(const Date& date) const {
    return date.secondsSince1970() - held_.now.secondsSince1970() > limits_.futureGrace;
  }

  Reason wrongDate() const {
    if (!published_) return std::nullopt;
    const double moment = published_->secondsSince1970();
    if (isOfTheFuture(*published_)) return RatesReason{Fault::future, {}, 0, moment, {}};
    if (!held_.published || isOfTheFuture(*held_.published)) return std::nullopt;
    const double before = held_.published->secondsSince1970();
    if (moment < before) return RatesReason{Fault::older, {}, before, moment, {}};
    return std::nullopt;
  }

  void readHeld() {
    const auto add = [&](const std::vector<USDRateRef>& rates,
                         const std::optional<Date>& published) {
      for (const USDRateRef& rate : rates) {
        // What is held may be anything.
        if (rate == nullptr || !isRate(rate->rate().doubleValue())) continue;
        before_.try_emplace(rate->code(), Before{rate->rate().doubleValue(), published});
      }
    };
    add(held_.rates, held_.published);
    for (const DatedRates& table : held_.others) add(table.rates, table.published);
  }

  // In the answer's order, so that one answer always gives the same reasons.
  void compare() {
    for (const USDRateRef& rate : answer_.rates()) {
      const std::string& code = rate->code();
      const auto before = before_.find(code);
      if (code == "USD" || before == before_.end()) continue;
      compareOne(code, before->second, rate->rate().doubleValue());
      before_.erase(before);  // of two equal entries one counts
    }
  }

  void compareOne(const std::string& code, const Before& before, double now) {
    const Group group = groupOf(code);
    const double days = daysBetween(before.published, published_);
    Tally& tally = group == Group::other ? others_ : officials_;
    ++tally.compared;
    addMove(group, std::abs(std::log(now / before.rate)), days);
    if (!leaps(group, before.rate, now, days, limits_)) return;
    RatesReason reason{Fault::moved, code, before.rate, now, {}};
    if (isConfirmed(code, group, now)) return verdict_.notices.push_back(std::move(reason));
    if (++tally.leaped == 1) tally.first = reason;
    const bool isTaken =
        group == Group::other && factorBetween(before.rate, now) <= limits_.largestLeap;
    (isTaken ? verdict_.notices : verdict_.leftOut).push_back(std::move(reason));
  }

  void addMove(Group group, double move, double days) {
    if (group == Group::official) return;
    const double most = group == Group::other
                            ? limits_.otherMedian + limits_.otherMedianADay * days
                            : std::min(limits_.largestTradedMove / 2,
                                       limits_.tradedMedian + limits_.tradedMedianADay * days);
    (group == Group::other ? otherMoves_ : tradedMoves_).push_back({move - most, move});
  }

  Reason vanished() const {
    if (limits_.mayLackOfficial) return std::nullopt;
    for (const USDRateRef& rate : held_.rates) {
      if (rate == nullptr || rates_.contains(rate->code())) continue;
      const CurrencyFacts* const facts = currencyFacts(rate->code());
      if (facts == nullptr || facts->kind != CurrencyKind::official) continue;
      return RatesReason{Fault::vanished, rate->code(), rate->rate().doubleValue(), 0, {}};
    }
    return std::nullopt;
  }

  // A later day says nearly the same as what was left out.
  bool isConfirmed(const std::string& code, Group group, double now) const {
    return published_ &&
           std::any_of(held_.doubted.begin(), held_.doubted.end(), [&](const auto& d) {
             return d.code == code && isRate(d.rate) &&
                    published_->secondsSince1970() - d.published.secondsSince1970() >= kDay / 2 &&
                    !leaps(group, d.rate, now, daysBetween(d.published, published_), limits_);
           });
  }

  struct Move {
    double beyond = 0;     // what is allowed in so many days
    double logarithm = 0;  // of the factor
  };

  struct Tally {
    std::size_t compared = 0;
    std::size_t leaped = 0;
    RatesReason first{};

    Reason tooMany(double share, std::size_t fewest) const {
      const auto all = static_cast<double>(compared);
      const double most = compared < fewest ? 0 : std::max(1.0, std::floor(share * all));
      const auto found = static_cast<double>(leaped);
      if (found <= most) return std::nullopt;
      return leaped == 1 ? first : RatesReason{Fault::manyMoved, {}, all, found, {}};
    }
  };

  static Reason medianLeaps(std::vector<Move>& moves) {
    if (moves.size() < kFewest) return std::nullopt;
    const auto middle = moves.begin() + static_cast<std::ptrdiff_t>(moves.size() / 2);
    std::nth_element(moves.begin(), middle, moves.end(),
                     [](const Move& a, const Move& b) { return a.beyond < b.beyond; });
    if (middle->beyond <= 0) return std::nullopt;
    return RatesReason{Fault::allMoved, {}, 0, std::exp(middle->logarithm), {}};
  }

  Reason tooMany() {
    // Of two or three currencies, one that leaps says that the table is wrong.
    if (Reason reason = officials_.tooMany(limits_.officialShare, kFewest)) return reason;
    if (Reason reason = others_.tooMany(limits_.otherShare, 1)) return reason;
    if (Reason reason = medianLeaps(tradedMoves_)) return reason;
    return medianLeaps(otherMoves_);
  }

  const Response& answer_;
  const HeldRates& held_;
  const PlausibleLimits& limits_;
  std::optional<Date> published_;
  std::unordered_map<std::string_view, double> rates_;
  std::unordered_map<std::string_view, Before> before_;
  Tally officials_;
  Tally others_;
  std::vector<Move> tradedMoves_;
  std::vector<Move> otherMoves_;
  AnswerVerdict verdict_;
};

}  // namespace

std::span<const std::string_view> mostTradedCodes() noexcept {
  return kTenTraded;
}

AnswerVerdict::AnswerVerdict(std::optional<std::string> reason) {
  if (reason) against = RatesReason{Fault::other, {}, 0, 0, *std::move(reason)};
}

AnswerCheck plausible(const PlausibleLimits& limits) {
  return [limits](const Response& answer, const HeldRates& held) -> AnswerVerdict {
    return Comparison(answer, held, limits).verdict();
  };
}

std::optional<RatesReason> contradiction(const RatesTable& first, const RatesTable& second,
                                         const PlausibleLimits& limits) {
  std::unordered_map<std::string_view, double> rates;
  for (const USDRateRef& rate : second.rates) {
    if (rate != nullptr) rates.try_emplace(rate->code(), rate->rate().doubleValue());
  }
  const bool areDated = first.published && second.published;
  const double days = areDated ? daysBetween(first.published, second.published) : kWeek;
  for (const USDRateRef& rate : first.rates) {
    const auto other = rate != nullptr ? rates.find(rate->code()) : rates.end();
    if (other == rates.end()) continue;
    const double value = rate->rate().doubleValue();
    if (!leaps(groupOf(rate->code()), value, other->second, days, limits)) continue;
    return RatesReason{Fault::contradiction, rate->code(), value, other->second, {}};
  }
  return std::nullopt;
}

}  // namespace fexora
