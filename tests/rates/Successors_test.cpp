#include "fexora/rates/Successors.h"

#include <cmath>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "fexora/catalogue/CurrencyFacts.h"

namespace fexora::test {
namespace {

TEST(Successors, MissingRates_ComeFromTheNearestSuccessorByOneRounding) {
  std::vector<CurrencyFacts> circle(2);
  circle[0].code = circle[1].successor = "QQC";
  circle[1].code = circle[0].successor = "QQD";
  for (CurrencyFacts& row : circle) {
    row.kind = CurrencyKind::withdrawn;
    row.units = 3.0;
    row.successorUnits = 7.0;
  }
  ASSERT_TRUE(addCurrencyFacts(circle));
  const std::vector<USDRateRef> given = {
      USDRate::make(0.880226, "EUR"), USDRate::make(6.0, "FRF"),     USDRate::make(45.1, "VES"),
      USDRate::make(24.3, "CUP"),     USDRate::make(1400.25, "ARS"), nullptr,
      USDRate::make(HUGE_VAL, "TRY"), USDRate::make(0.0, "RON"),     USDRate::make(0.5, "EUR"),
      USDRate::make(9.0, "BRN"),
  };
  const auto filled = withSuccessors(given);
  ASSERT_GT(filled.size(), given.size());
  EXPECT_TRUE(std::equal(given.begin(), given.end(), filled.begin()));
  std::map<std::string, double> added;
  for (std::size_t i = given.size(); i < filled.size(); ++i) {
    EXPECT_TRUE(added.try_emplace(filled[i]->code(), filled[i]->rate().doubleValue()).second);
  }
  // The products as decimals, written out.
  EXPECT_EQ(added.at("DEM"), 1.72157241758);  // 0.880226 × 1.95583
  EXPECT_EQ(added.at("ITL"), 1704.35519702);  // 0.880226 × 1936.27
  EXPECT_EQ(added.at("VEF"), 4510000.0);      // 45.1 × 100,000
  EXPECT_EQ(added.at("VEB"), 4510000000.0);   // and × 1,000
  EXPECT_EQ(added.at("CUC"), 1.0125);         // 24.3 ÷ 24
  EXPECT_EQ(added.at("ARM"), 1400.25e13);     // × 10,000 × 1,000 × 10,000 × 100
  EXPECT_EQ(added.at("BRB"), 9e6);            // BRN is nearer than BRL
  for (const char* none : {"FRF", "TRL", "ROL", "ZWR", "DDM", "QQC", "EUR", "BRE"}) {
    EXPECT_FALSE(added.contains(none)) << none;
  }
}

}  // namespace
}  // namespace fexora::test
