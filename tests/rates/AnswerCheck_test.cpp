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

// Twenty currencies.
Rates held() {
  Rates rates = {{"USD", 1}, {"EUR", 0.8}, {"JPY", 150}};
  for (char c = 'A'; c <= 'Q'; ++c) rates.emplace_back(std::string("XX") + c, 100);
  return rates;
}

Rates with(const char* code, double rate) {
  Rates rates = held();
  for (auto& [known, value] : rates) {
    if (known == code) value = rate;
  }
  return rates;
}

Rates without(const char* code, std::size_t count = 20) {
  Rates rates = held();
  std::erase_if(rates, [&](const auto& rate) { return rate.first == code; });
  rates.resize(std::min(count, rates.size()));
  return rates;
}

TEST(PlausibleTest, NamesWhatIsWrong) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr double kDay = 86'400;
  const struct {
    Rates rates;
    double updated;
    const char* reason;  // a part of it
  } cases[] = {
      {held(), kNow, "taken"},
      {held(), 0, "taken"},
      {held(), kNow - kDay, "taken"},
      {held(), kNow - kDay - 1, "older than those of"},
      {held(), kNow + kDay, "taken"},
      {held(), kNow + kDay + 1, "of the future"},
      {{}, kNow, "there are none"},
      {without("USD"), kNow, "the US dollar is missing"},
      {with("USD", 1.01), kNow, "one US dollar is 1.01 US dollars"},
      {without("XXA"), kNow, "taken"},
      {without("", 18), kNow, "taken"},
      {without("", 17), kNow, "only 17 of the 20 currencies"},
      {with("XXB", 0), kNow, "the rate of XXB is 0"},
      {with("XXB", -1), kNow, "the rate of XXB is -1"},
      {with("XXB", kInfinity), kNow, "the rate of XXB is inf"},
      {with("XXB", kNaN), kNow, "the rate of XXB is nan"},
      {with("JPY", 75), kNow, "taken"},
      {with("JPY", 74.9), kNow, "JPY moved from 150 to 74.9"},
      {with("JPY", 225), kNow, "taken"},
      {with("JPY", 225.1), kNow, "JPY moved"},
      {with("XXB", 1000), kNow, "taken"},
      {with("XXB", 1000.1), kNow, "XXB moved"},
      {with("XXB", 10), kNow, "taken"},
      {with("XXB", 9.9), kNow, "XXB moved"},
  };
  const HeldRates before{records(held()), Date(kNow - kDay), Date(kNow)};
  for (const auto& [rates, updated, reason] : cases) {
    Response answer;
    answer.setUpdated(updated);
    answer.setRates(records(rates));
    const auto found = plausible()(answer, before);
    const std::string told = found.value_or("taken");
    EXPECT_NE(told.find(reason), std::string::npos) << told << ", not " << reason;
  }
  Response first;
  first.setRates(records({{"JPY", 1}}));
  EXPECT_EQ(plausible()(first, {{}, {}, Date(kNow)}), std::nullopt) << "nothing is held";
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
