// How fresh the kept rates count, whoever stored them.
#include "fexora/rates/Freshness.h"

#include <limits>

#include <gtest/gtest.h>

#include "fexora/fexora.h"

#include "tests/support/StoreWorld.h"

namespace fexora {
namespace {

using State = Freshness::State;
using Origin = Freshness::Origin;

double at(const char* text) {
  return Date::fromIsoText(text)->secondsSince1970();
}

Response answerOf(NSNumber updated) {
  Response answer;
  answer.setUpdated(updated);
  answer.setSource("a bank");
  answer.setRates({USDRate::make(1, "USD"), USDRate::make(0.9, "EUR")});
  return answer;
}

class FreshnessTest : public testing::Test {
 protected:
  // Rates published then, taken at once, looked at later.
  Freshness after(const char* published, const char* now, const FreshnessPolicy& policy = {}) {
    world.desktop.loop.setWall(at(published));
    EXPECT_FALSE(rates.takeAnswer(answerOf(at(published)), RatesAnswer::Origin::service, false));
    return rates.freshness(policy, Date(at(now)));
  }

  test::StoreWorld world;
  StoreManager& store = world.start();
  RateManager rates{world.desktop.platform, nullptr, &store};
};

TEST_F(FreshnessTest, AgesByThePolicy) {
  constexpr const char* kFriday = "2026-09-25T14:00:00Z";
  const struct {
    const char* published;
    const char* now;
    State state;
  } cases[] = {
      {"2026-09-22T14:00:00Z", "2026-09-23T16:00:00Z", State::fresh},  // 26 hours, to the second
      {"2026-09-22T14:00:00Z", "2026-09-23T16:00:01Z", State::stale},
      {kFriday, "2026-09-28T16:00:00Z", State::fresh},  // with a weekend between
      {kFriday, "2026-09-28T16:00:01Z", State::stale},
      {"2026-09-26T10:00:00Z", "2026-09-29T02:00:00Z", State::fresh},  // published on a Saturday
      {kFriday, "2026-10-02T13:59:59Z", State::stale},
      {kFriday, "2026-10-02T14:00:00Z", State::old},  // seven days
      {kFriday, "2026-09-24T14:00:00Z", State::fresh},
      {kFriday, "2026-09-24T13:59:59Z", State::stale},  // more than a day ahead of the clock
  };
  for (const auto& [published, now, state] : cases) {
    EXPECT_EQ(after(published, now).state, state) << published << " at " << now;
  }
  FreshnessPolicy everyDay;
  everyDay.countsWeekends = true;
  EXPECT_EQ(after(kFriday, "2026-09-26T17:00:00Z", everyDay).state, State::stale);
}

TEST_F(FreshnessTest, SaysWhoBroughtTheRates) {
  const Date now(world.desktop.loop.wallSeconds());
  EXPECT_EQ(rates.freshness().origin, Origin::none);
  EXPECT_EQ(rates.freshness().state, State::none);

  seedBundledRates(store);
  EXPECT_EQ(rates.freshness().origin, Origin::bundled);
  EXPECT_EQ(rates.freshness().published, bundledRatesDay());

  const double yesterday = now.secondsSince1970() - 86'400;
  rates.takeAnswer(answerOf(yesterday), RatesAnswer::Origin::file, true);
  store.loadData();  // from the file
  const auto known = rates.freshness();
  EXPECT_EQ(known.origin, Origin::file);
  EXPECT_EQ(known.source, "a bank");
  EXPECT_EQ(known.published, Date(yesterday));
  EXPECT_EQ(known.stored, now);

  // By this process, and by another one that knows nothing of answers.
  store.saveUSDRates({USDRate::make(0.9, "EUR")}, false);
  EXPECT_EQ(rates.freshness().published, std::nullopt);
  rates.takeAnswer(answerOf(yesterday), RatesAnswer::Origin::service, true);
  Dictionary content = store.ud();
  content.set(kUDUSDRatesUpdated, Date(now.secondsSince1970() + 1));
  world.write(content);
  store.loadData();
  EXPECT_EQ(rates.freshness().origin, Origin::none);
  EXPECT_EQ(rates.freshness().published, std::nullopt);
  EXPECT_EQ(rates.freshness().state, State::fresh) << "counted from the storing";

  content.remove(kUDUSDRatesUpdated);
  store.setUd(content);
  EXPECT_EQ(rates.freshness().state, State::old) << "of no known age";
}

TEST_F(FreshnessTest, PublishedOnlyWhenItCanBeATimeOfThisCentury) {
  for (const double updated :
       {0.0, 20'260'929.0, 5e9, 5e12, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(answerOf(updated).published(), std::nullopt) << updated;
  }
  EXPECT_EQ(answerOf(946'684'800).published(), Date(946'684'800));
  EXPECT_EQ(answerOf(946'684'800'500.0).published(), Date(946'684'800.5)) << "milliseconds";
  // An answer that does not tell its day is never fresh.
  EXPECT_FALSE(rates.takeAnswer(answerOf(0), RatesAnswer::Origin::service, false));
  EXPECT_EQ(rates.freshness().state, State::stale);
}

TEST_F(FreshnessTest, StoredRatesAreLoadedWithoutARequestOrALine) {
  EXPECT_FALSE(rates.loadStoredRates());
  store.saveUSDRates({USDRate::make(0.5, "EUR")}, false);
  const auto lines = world.desktop.log.lines.size();
  const std::vector selection = {Currency::make("EUR")};
  EXPECT_TRUE(rates.loadStoredRates(selection));
  const auto pair = [&] {
    return rates.rateForSourceCurrency(Currency::make("USD"), selection[0]);
  };
  EXPECT_EQ(pair()->rate().doubleValue(), 0.5);
  store.setUd({});
  EXPECT_TRUE(rates.loadStoredRates(selection)) << "from memory";
  EXPECT_TRUE(pair().has_value());
  EXPECT_EQ(world.desktop.log.lines.size(), lines);
  EXPECT_TRUE(world.desktop.transport.requests.empty());
  EXPECT_EQ(rates.lastUpdate(), std::nullopt);
}

}  // namespace
}  // namespace fexora
