// The built-in facts in samples (what they are made from is the script's own check), what hosts
// add, and rounding.
#include "fexora/catalogue/CurrencyFacts.h"

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/catalogue/MinorUnit.h"
#include "fexora/resources/EmbeddedCatalogue.h"

namespace fexora::test {
namespace {

TEST(CurrencyFacts, BuiltIn_KnowTheWholeCatalogueAndSamplesOfEachKind) {
  for (const std::string_view code : embeddedCatalogue()) {
    const CurrencyFacts* const facts = currencyFacts(code);
    ASSERT_NE(facts, nullptr) << code;
    EXPECT_EQ(facts->code, code);
  }
  for (const char* none : {"", "usd", "US", "USD ", "XXX"}) {
    EXPECT_EQ(currencyFacts(none), nullptr) << none;
  }
  struct Row {
    const char* code;
    CurrencyKind kind;
    int digits;
    double step;
    const char *sign, *region;
  };
  for (const auto& [code, kind, digits, step, sign, region] : std::vector<Row>{
           {"CHF", CurrencyKind::official, 2, 0.05, "Fr", "LI"},
           {"IQD", CurrencyKind::official, 3, 1.0, "د.ع.", "IQ"},
           {"JPY", CurrencyKind::official, 0, 0.0, "円", "JP"},
           {"JEP", CurrencyKind::local, 2, 0.0, "", "JE"},
           {"BTC", CurrencyKind::crypto, -1, 0.0, "₿", ""},
           {"XAU", CurrencyKind::metal, -1, 0.0, "", ""},
           {"ITL", CurrencyKind::withdrawn, 0, 0.0, "", "VA"},
       }) {
    const CurrencyFacts& facts = *currencyFacts(code);
    EXPECT_EQ(facts.kind, kind) << code;
    EXPECT_EQ(facts.digits.value_or(-1), digits) << code;
    EXPECT_EQ(facts.cashStep, step) << code;
    EXPECT_TRUE(*sign == '\0' ? facts.signs.empty() : facts.signs.contains(sign)) << code;
    EXPECT_TRUE(*region == '\0' ? facts.regions.empty() : facts.regions.contains(region)) << code;
  }
}

TEST(CurrencyFacts, Successors_LeadToACurrencyThatIsInUse) {
  struct Row {
    const char *code, *successor;
    double units, successorUnits;
    const char *replaced, *lastDay, *since;
  };
  for (const auto& [code, successor, units, successorUnits, replaced, lastDay, since] :
       std::vector<Row>{
           {"DEM", "EUR", 1.95583, 1.0, "2002-01-01", "2001-12-31", "1999-01-01"},
           {"TRL", "TRY", 1e6, 1.0, "2005-01-01", "2005-12-31", "2005-01-01"},
           {"CUC", "CUP", 1.0, 24.0, "2021-01-01", "", "2021-01-01"},
           {"DDM", "DEM", 0.0, 0.0, "1990-07-01", "1990-10-02", ""},
       }) {
    const CurrencyFacts& facts = *currencyFacts(code);
    EXPECT_EQ(facts.successor, successor);
    EXPECT_EQ(facts.units, units) << code;
    EXPECT_EQ(facts.successorUnits, successorUnits) << code;
    EXPECT_EQ(facts.replaced, replaced) << code;
    EXPECT_EQ(facts.lastDay, lastDay) << code;
    EXPECT_EQ(facts.ratioSince, since) << code;
  }
  int euro = 0;
  for (const CurrencyFacts* facts : allCurrencyFacts()) {
    if (facts->successor == "EUR" && facts->hasRatio()) ++euro;
    EXPECT_EQ(facts->kind == CurrencyKind::withdrawn, !facts->successor.empty()) << facts->code;
    for (int steps = 0; !facts->successor.empty() && steps < 10; ++steps) {
      facts = currencyFacts(facts->successor);
    }
    EXPECT_TRUE(facts->successor.empty()) << facts->code;
  }
  EXPECT_EQ(euro, 24);  // 21 of the member states, ADP and VAL beside them, XEU
}

TEST(CurrencyFacts, RowsOfAHost_AreFoundFromThenOnAndHandedOutOnesStay) {
  const std::string code = "QQA";
  CurrencyFacts row;
  row.code = code;
  row.signs = WordList("Q$ q");
  row.digits = 1;
  ASSERT_TRUE(addCurrencyFacts({&row, 1}));
  const CurrencyFacts* const first = currencyFacts(code);
  ASSERT_NE(first, nullptr);
  EXPECT_NE(first->code.data(), code.data());
  row.digits = 3;
  ASSERT_TRUE(addCurrencyFacts({&row, 1}));
  EXPECT_EQ(first->digits, 1);
  EXPECT_EQ(currencyFacts(code)->digits, 3);
  EXPECT_EQ(std::vector<std::string_view>(first->signs.begin(), first->signs.end()),
            (std::vector<std::string_view>{"Q$", "q"}));

  std::vector<CurrencyFacts> wrong(7, row);
  wrong[0].code = "";
  wrong[1].digits = -1;
  wrong[2].cashStep = -0.05;
  wrong[3].units = std::numeric_limits<double>::quiet_NaN();
  wrong[4].units = 2.0;
  wrong[5].units = wrong[5].successorUnits = 1.0;
  wrong[6].customaryDigits = 1000;
  row.code = "QQB";
  for (const CurrencyFacts& bad : wrong) EXPECT_FALSE(addCurrencyFacts(std::vector{row, bad}));
  EXPECT_EQ(currencyFacts("QQB"), nullptr);
}

TEST(MinorUnit, Rounding_IsThatOfTheDecimalThatTheDoublePrintsAs) {
  struct Row {
    const char* code;
    double value, halfEven, halfUp, up, down, cash;
  };
  for (const auto& row : std::vector<Row>{
           {"USD", 2.675, 2.68, 2.68, 2.68, 2.67, 2.68},
           {"USD", 2.665, 2.66, 2.67, 2.67, 2.66, 2.67},
           {"USD", -2.665, -2.66, -2.67, -2.67, -2.66, -2.67},
           {"USD", 0.001, 0.0, 0.0, 0.01, 0.0, 0.0},
           {"USD", 1e-300, 0.0, 0.0, 0.01, 0.0, 0.0},
           {"USD", 999999999999.995, 1e12, 1e12, 1e12, 999999999999.99, 1e12},
           {"USD", 123456789012.345, 123456789012.34, 123456789012.35, 123456789012.35,
            123456789012.34, 123456789012.35},
           {"USD", 1.7e308, 1.7e308, 1.7e308, 1.7e308, 1.7e308, 1.7e308},
           {"JPY", 0.5, 0.0, 1.0, 1.0, 0.0, 1.0},
           {"KWD", 1.0005, 1.0, 1.001, 1.001, 1.0, 1.001},
           {"CHF", 1.025, 1.02, 1.03, 1.03, 1.02, 1.05},
           {"CHF", -1.0249, -1.02, -1.02, -1.03, -1.02, -1.0},
           {"DKK", 0.745, 0.74, 0.75, 0.75, 0.74, 0.5},
           {"DKK", 0.75, 0.75, 0.75, 0.75, 0.75, 1.0},
           {"HUF", 12.5, 12.5, 12.5, 12.5, 12.5, 15.0},
           {"HUF", 12.49, 12.49, 12.49, 12.49, 12.49, 10.0},
           {"HUF", 1e22, 1e22, 1e22, 1e22, 1e22, 1e22},
           {"NZD", 0.15, 0.15, 0.15, 0.15, 0.15, 0.1},
           {"XAU", 0.123456, 0.123456, 0.123456, 0.123456, 0.123456, 0.123456},
       }) {
    const CurrencyFacts& facts = *currencyFacts(row.code);
    const auto rounded = [&](Rounding mode) { return roundedToMinorUnit(row.value, facts, mode); };
    EXPECT_EQ(rounded(Rounding::halfEven), row.halfEven) << row.code << row.value;
    EXPECT_EQ(rounded(Rounding::halfUp), row.halfUp) << row.code << row.value;
    EXPECT_EQ(rounded(Rounding::up), row.up) << row.code << row.value;
    EXPECT_EQ(rounded(Rounding::down), row.down) << row.code << row.value;
    EXPECT_EQ(rounded(Rounding::cash), row.cash) << row.code << row.value;
  }
  const CurrencyFacts endless{.cashStep = HUGE_VAL};
  EXPECT_EQ(roundedToMinorUnit(1.5, endless, Rounding::cash), 1.5);
  const CurrencyFacts& dollar = *currencyFacts("USD");
  EXPECT_FALSE(std::signbit(roundedToMinorUnit(-0.001, dollar, Rounding::halfUp)));
  for (const double odd : {HUGE_VAL, -HUGE_VAL}) {
    EXPECT_EQ(roundedToMinorUnit(odd, dollar, Rounding::cash), odd);
  }
  EXPECT_TRUE(std::isnan(roundedToMinorUnit(std::nan(""), dollar, Rounding::up)));
}

}  // namespace
}  // namespace fexora::test
