// Answers that may not replace what is held.
#include "fexora/rates/AnswerCheck.h"

#include <limits>
#include <stdexcept>

#include <gtest/gtest.h>

#include "fexora/fexora.h"

#include "tests/support/StoreWorld.h"

namespace fexora {
namespace {

using Rates = std::vector<std::pair<std::string, double>>;

constexpr double kNow = 1'790'000'000;

std::vector<USDRateRef> records(const Rates& rates) {
  std::vector<USDRateRef> list;
  for (const auto& [code, rate] : rates) list.push_back(USDRate::make(rate, code));
  return list;
}

// Of each kind.
Rates held() {
  return {{"USD", 1},      {"EUR", 0.8},  {"JPY", 150},  {"GBP", 0.7}, {"CHF", 0.9},
          {"AUD", 1.5},    {"TRY", 40},   {"DKK", 6},    {"THB", 33},  {"CZK", 20},
          {"XAU", 0.0003}, {"BTC", 1e-5}, {"ETH", 2e-4}, {"DOGE", 5},  {"FOK", 6}};
}

using Changes = std::vector<std::pair<const char*, double>>;  // 0: without it

Rates with(const Changes& changes) {
  Rates rates = held();
  for (const auto& change : changes) {
    const bool isLost = change.second == 0;
    std::erase_if(rates, [&](const auto& rate) { return isLost && rate.first == change.first; });
    for (auto& [known, rate] : rates) {
      if (known == change.first) rate = change.second;
    }
  }
  return rates;
}

Rates times(double factor) {
  Rates rates = held();
  for (auto& [code, rate] : rates) rate *= code == "USD" ? 1 : factor;
  return rates;
}

std::string told(const AnswerVerdict& verdict) {
  if (verdict.against) return verdict.against->sentence();
  std::string text = "taken";
  for (const auto& each : verdict.leftOut) text += "; without: " + each.sentence();
  for (const auto& each : verdict.notices) text += "; notice: " + each.sentence();
  return text;
}

constexpr double kDay = 86'400;

TEST(PlausibleTest, NamesWhatIsWrong) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  Rates twice = held();
  twice.emplace_back("EUR", 0.81);
  Rates same = held();
  same.emplace_back("EUR", 0.8);
  const struct {
    Rates rates;
    double updated;
    std::string said;  // how it begins
  } cases[] = {
      {held(), kNow, "taken"},
      {held(), 0, "taken"},
      {held(), kNow * 1000, "taken"},
      {held(), kNow - kDay - 1, "they are of 2026-09-20, older than those of 2026-09-20"},
      {held(), (kNow - kDay - 1) * 1000, "they are of 2026-09-20, older"},
      {held(), kNow + kDay, "taken"},
      {held(), kNow + kDay + 1, "they are of the future, 2026-09-22"},
      {{}, kNow, "there are none"},
      {{{"USD", 1}}, kNow, "there are none"},
      {with({{"USD", 0}}), kNow, "the US dollar is missing"},
      {with({{"USD", 1.01}}), kNow, "one US dollar is 1.01 US dollars"},
      {with({{"USD", 1.25}, {"EUR", 1}}), kNow, "they are quoted against EUR"},
      {with({{"USD", 0}, {"GBP", 1}}), kNow, "they are quoted against GBP"},
      {twice, kNow, "EUR is there twice, as 0.8 and as 0.81"},
      {same, kNow, "taken"},
      // What an answer lacks takes nothing away.
      {with({{"EUR", 0}, {"BTC", 0}}), kNow, "taken"},
      {with({{"TRY", -1}}), kNow, "the rate of TRY is -1"},
      {with({{"TRY", kInfinity}}), kNow, "the rate of TRY is inf"},
      {with({{"TRY", kNaN}}), kNow, "the rate of TRY is nan"},
      // A day lies between: 11 %, and 1.52 times.
      {with({{"JPY", 133.6}}), kNow, "taken"},
      {with({{"JPY", 133.4}}), kNow, "taken; without: JPY moved from 150 to 133.4"},
      {with({{"TRY", 60.7}}), kNow, "taken"},
      {with({{"TRY", 60.9}}), kNow, "taken; without: TRY moved from 40 to 60.9"},
      {with({{"TRY", 80}, {"DKK", 1}}), kNow, "2 of the 10 currencies leaped"},
      {{{"USD", 1}, {"EUR", 85}}, kNow, "EUR moved from 0.8 to 85"},
      {with({{"DOGE", 900}}), kNow, "taken; notice: DOGE moved from 5 to 900"},
      {with({{"DOGE", 5001}}), kNow, "taken; without: DOGE moved"},
      {with({{"DOGE", 900}, {"BTC", 1}}), kNow, "2 of the 4 currencies leaped"},
      {times(1.05), kNow, "nearly all moved at once, the middle one by a factor of 1.05"},
      {times(1.3), kNow, "5 of the 10 currencies leaped"},
  };
  const HeldRates before{records(held()), Date(kNow - kDay), Date(kNow)};
  for (const auto& [rates, updated, said] : cases) {
    Response answer;
    answer.setUpdated(updated);
    answer.setRates(records(rates));
    EXPECT_TRUE(told(plausible()(answer, before)).starts_with(said))
        << told(plausible()(answer, before)) << ", not " << said;
  }
}

TEST(PlausibleTest, TimeWidensTheLimits_AndLocksNothingOut) {
  const auto judged = [](const Rates& rates, HeldRates before) {
    Response answer;
    answer.setUpdated(kNow);
    answer.setRates(records(rates));
    before.now = Date(kNow);
    return told(plausible()(answer, before));
  };
  const Rates leaped = with({{"TRY", 80}});
  const auto after = [&](double days) {
    return judged(leaped, {records(held()), Date(kNow - days * kDay), {}});
  };
  EXPECT_NE(after(24), "taken");  // 1.98 times
  EXPECT_EQ(after(26), "taken");  // 2.02 times
  EXPECT_EQ(judged(held(), {records(held()), Date(kNow + 90 * kDay), {}}), "taken");
  // A later day says the same, and an earlier or another one does not.
  const auto doubted = [&](double rate, double days) {
    return judged(
        leaped,
        {records(held()), Date(kNow - kDay), {}, {}, {{"TRY", rate, Date(kNow - days * kDay)}}});
  };
  EXPECT_EQ(doubted(82, 1), "taken; notice: TRY moved from 40 to 80");
  EXPECT_EQ(doubted(82, 0), "taken; without: TRY moved from 40 to 80");
  EXPECT_EQ(doubted(20, 1), "taken; without: TRY moved from 40 to 80");
  // What the newest table lacks is compared with what stands beside it.
  EXPECT_EQ(judged(leaped, {records(with({{"TRY", 0}})),
                            Date(kNow - kDay),
                            {},
                            {{records({{"TRY", 40}}), Date(kNow - 2 * kDay)}}}),
            "taken; without: TRY moved from 40 to 80");
}

TEST(AnswerCheckTest, WhatIsHeldStays_AndTheCompletionLearnsWhy) {
  test::StoreWorld world;
  StoreManager& store = world.start();
  RateManager rates(world.desktop.platform, nullptr, &store);
  std::vector<std::string> told;
  const auto load = [&](const Value& answer) {
    rates.setLastUpdate(std::nullopt);
    rates.loadRates(std::nullopt, [&](bool fromCache, const ResponseError* error) {
      if (!fromCache) told.push_back(error != nullptr ? error->message : "taken");
    });
    world.desktop.transport.answer(answer);
  };
  const auto rate = [](const char* code, double value) {
    return Value(Dictionary{{"code", code}, {"rate", value}});
  };
  rates.setAnswerCheck(plausible());
  load(Dictionary{{"serviceMessage", "hello"}, {"rates", Array{rate("USD", 1), rate("EUR", 0.9)}}});
  const Dictionary before = store.ud();
  load(Dictionary{});
  EXPECT_EQ(told, (std::vector<std::string>{"taken", "there are none"}));
  EXPECT_EQ(rates.verdict().against->kind, RatesReason::Kind::noRates);
  EXPECT_EQ(store.ud(), before);
  EXPECT_EQ(rates.serviceMessage(), "hello");
  const auto kept = std::make_shared<std::string>("no more\nSAVE SUCCESS");
  rates.setAnswerCheck([&rates, kept](const Response&, const HeldRates&) {
    rates.setAnswerCheck({});
    return std::optional(*kept);
  });
  EXPECT_EQ(rates.takeAnswer(Response(), RatesAnswer::Origin::file, false)->message,
            "no more SAVE SUCCESS");
  EXPECT_EQ(world.desktop.log.count("SAVE SUCCESS\n"), 0);
  rates.setAnswerCheck([](const Response&, const HeldRates&) -> std::optional<std::string> {
    throw std::runtime_error("broken");
  });
  const auto problem = rates.takeAnswer(Response(), RatesAnswer::Origin::file, false);
  EXPECT_EQ(problem->kind, ResponseError::Kind::implausible);
  EXPECT_EQ(store.ud(), before);
  rates.setAnswerCheck({});
  // Whatever an answer calls itself: it is kept, and so is all that is saved later.
  for (const char* source : {"Central\u0001Bank", "\uFFFF", "\xC3"}) {
    Response answer;
    answer.setSource(source);
    answer.setServiceMessage(source);
    EXPECT_EQ(rates.takeAnswer(answer, RatesAnswer::Origin::file, true), std::nullopt);
    EXPECT_EQ(store.saveProblem(), "");
    EXPECT_EQ(rates.serviceMessage(), oneLine(source));
    EXPECT_EQ(store.ratesAnswer()->source, oneLine(source));
  }
  load(Dictionary{});
  EXPECT_EQ(told.back(), "taken");
}

}  // namespace
}  // namespace fexora
