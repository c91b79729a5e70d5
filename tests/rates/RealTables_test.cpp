// The check of answers on 73 real tables, and on each of them with one of ten harms.
#include <cmath>
#include <fstream>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "fexora/fexora.h"

#include "tests/support/StoreWorld.h"

namespace fexora {
namespace {

using RatesByCode = std::map<std::string, double>;
struct Table {
  Date day;
  RatesByCode rates;
};

// See tests/data/README.md.
std::vector<Table> realTables() {
  std::ifstream in(FEXORA_TEST_SOURCE_DIR "/tests/data/usd-tables.tsv");
  std::vector<Table> tables;
  std::string line;
  while (std::getline(in, line)) {
    if (line.starts_with('#')) continue;
    std::istringstream fields(line + "\t");
    std::string code;
    std::string field;
    std::string last;
    std::getline(fields, code, '\t');
    for (std::size_t i = 0; std::getline(fields, field, '\t'); ++i) {
      if (code == "code") {
        tables.push_back({*Date::fromIsoText(field + "T00:00:00Z"), {}});
        continue;
      }
      if (!field.empty()) last = field;
      if (last != "-") tables[i].rates[code] = std::stod(last);
    }
  }
  return tables;
}

bool isOfficial(const std::string& code) {
  const CurrencyFacts* facts = currencyFacts(code);
  return code != "USD" && facts != nullptr && facts->kind == CurrencyKind::official;
}

class RealTablesTest : public testing::Test {
 public:
  RealTablesTest() { rates.setAnswerCheck(plausible()); }

  // What speaks against it, or nothing.
  std::string take(const Table& table) {
    RatesTable each{{}, table.day, "real", RatesAnswer::Origin::service};
    for (const auto& [code, rate] : table.rates) each.rates.push_back(USDRate::make(rate, code));
    const auto error = rates.takeTables({each}, false);
    return error ? error->message : "";
  }
  // As if the program had begun with this one.
  void begin(const Table& table) {
    rates.setAnswerCheck({});
    store.setUd({});
    setDay(table);
    EXPECT_EQ(take(table), "");
    rates.setAnswerCheck(plausible());
  }
  void setDay(const Table& table) {
    world.desktop.loop.setWall(table.day.secondsSince1970() + 40'000);
  }
  RatesByCode listed() const {
    RatesByCode found;
    for (const USDRateRef& rate : store.loadUSDRates().value_or(std::vector<USDRateRef>())) {
      found[rate->code()] = rate->rate().doubleValue();
    }
    return found;
  }
  std::string random(const RatesByCode& of, bool (*fits)(const std::string&)) {
    std::vector<std::string> codes;
    for (const auto& [code, rate] : of) {
      if (fits(code)) codes.push_back(code);
    }
    return codes[std::uniform_int_distribution<std::size_t>(0, codes.size() - 1)(chance)];
  }
  bool happens(double share) { return std::uniform_real_distribution<>(0, 1)(chance) < share; }

  test::StoreWorld world;
  StoreManager& store = world.start();
  RateManager rates{world.desktop.platform, nullptr, &store};
  std::mt19937 chance{20'260'929};
  const std::vector<Table> tables = realTables();
};

TEST_F(RealTablesTest, NoneIsRefused_WhateverDaysAreLeftOut) {
  ASSERT_EQ(tables.size(), 73U);
  int taken = 0;
  for (int round = 0; round < 8; ++round) {
    begin(tables.front());
    for (std::size_t i = 1; i < tables.size(); ++i) {
      if (round > 0 && happens(0.13 * round)) continue;
      setDay(tables[i]);
      EXPECT_EQ(take(tables[i]), "") << tables[i].day.isoText().value_or("") << ", round " << round;
      ++taken;
    }
  }
  RecordProperty("taken", taken);
}

TEST_F(RealTablesTest, WhatWasLeftOutIsTaken_OnceALaterDaySaysTheSame) {
  begin(tables[70]);
  for (const std::size_t day : {71U, 71U, 72U}) {
    Table table = tables[day];
    table.rates["TRY"] *= 3;
    setDay(table);
    EXPECT_EQ(take(table), "");
    EXPECT_EQ(listed().contains("TRY"), day == 72);
    // A narrow table between them settles nothing.
    if (day == 71) {
      EXPECT_EQ(take({table.day, {{"USD", 1}, {"EUR", table.rates["EUR"]}}}), "");
    }
  }
  EXPECT_DOUBLE_EQ(listed()["TRY"], tables[72].rates.at("TRY") * 3);
}

// Of each harm: refused, or only what was harmed is left out. What was held before is there
// afterwards, here or beside.
TEST_F(RealTablesTest, HarmsAreKeptOut) {
  using Harm = std::set<std::string> (*)(RealTablesTest&, Table&, std::size_t);  // the harmed codes
  const auto all = [](Table& table, auto change) {
    std::set<std::string> harmed;
    for (auto& [code, rate] : table.rates) {
      if (code == "USD") continue;
      rate = change(rate);
      harmed.insert(code);
    }
    return harmed;
  };
  static const auto each = all;
  const std::pair<const char*, Harm> harms[] = {
      {"a slipped mark",
       [](RealTablesTest& self, Table& table, std::size_t) {
         const std::string code = self.random(table.rates, isOfficial);
         table.rates[code] *= self.happens(0.5) ? 10 : 0.1;
         return std::set{code};
       }},
      {"two rows exchanged",
       [](RealTablesTest& self, Table& table, std::size_t) {
         std::string one;
         std::string other;
         do {
           one = self.random(table.rates, isOfficial);
           other = self.random(table.rates, isOfficial);
         } while (std::abs(std::log(table.rates[one] / table.rates[other])) < std::log(3));
         std::swap(table.rates[one], table.rates[other]);
         return std::set{one, other};
       }},
      {"inverted", [](RealTablesTest&, Table& table,
                      std::size_t) { return each(table, [](double rate) { return 1 / rate; }); }},
      {"by the euro",
       [](RealTablesTest&, Table& table, std::size_t) {
         const double euro = table.rates["EUR"];
         table.rates["USD"] = 1 / euro;
         return each(table, [euro](double rate) { return rate / euro; });
       }},
      {"per 100", [](RealTablesTest&, Table& table,
                     std::size_t) { return each(table, [](double rate) { return rate * 100; }); }},
      {"cut short",
       [](RealTablesTest& self, Table& table, std::size_t) {
         const std::string last = self.random(table.rates, [](const std::string&) { return true; });
         std::set<std::string> lost;
         for (auto at = table.rates.upper_bound(last); at != table.rates.end(); ++at) {
           lost.insert(at->first);
         }
         std::erase_if(table.rates, [&](const auto& rate) { return lost.contains(rate.first); });
         return lost;
       }},
      {"last year's",
       [](RealTablesTest& self, Table& table, std::size_t i) {
         table = self.tables[i > 20 ? i - 20 : 0];
         return std::set<std::string>{};
       }},
      {"all times 1.3",
       [](RealTablesTest&, Table& table, std::size_t) {
         return each(table, [](double rate) { return rate * 1.3; });
       }},
      {"one official code times 3",
       [](RealTablesTest& self, Table& table, std::size_t) {
         const std::string code = self.random(table.rates, isOfficial);
         table.rates[code] *= 3;
         return std::set{code};
       }},
      {"no dollar",
       [](RealTablesTest&, Table& table, std::size_t) {
         table.rates.erase("USD");
         return std::set<std::string>{};
       }},
  };
  for (const auto& [name, harm] : harms) {
    int refused = 0;
    int leftOut = 0;
    for (std::size_t i = 2; i < tables.size(); ++i) {
      begin(tables[i - 1]);
      setDay(tables[i]);
      const RatesByCode before = listed();
      const RatesByCode truth = tables[i].rates;
      Table harmed = tables[i];
      const auto codes = harm(*this, harmed, i);
      if (!take(harmed).empty()) {
        EXPECT_EQ(listed(), before) << name;
        ++refused;
        continue;
      }
      const RatesByCode now = listed();
      std::set<std::string> there;
      for (const auto& [code, rate] : now) there.insert(code);
      for (const RatesTable& table : keptTables(store.ud())) {
        for (const USDRateRef& rate : table.rates) there.insert(rate->code());
      }
      bool isOut = true;
      for (const std::string& code : codes) isOut = isOut && !now.contains(code);
      leftOut += isOut ? 1 : 0;
      for (const auto& [code, rate] : before) EXPECT_TRUE(there.contains(code)) << name << code;
      if (isOut) continue;
      ADD_FAILURE() << name << ", " << tables[i].day.isoText().value_or("") << ": "
                    << *codes.begin() << " " << truth.at(*codes.begin()) << " came in";
    }
    RecordProperty(std::string(name) + ", refused", refused);
    RecordProperty(std::string(name) + ", left out", leftOut);
  }
}

}  // namespace
}  // namespace fexora
