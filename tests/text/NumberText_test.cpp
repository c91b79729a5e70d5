#include "fexora/platform/text/NumberText.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace fexora {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NumberText, ReadsBackTheSameDouble) {
  for (const double value : {0.1, 1.0 / 3, -0.0, 5e-324, 1.7976931348623157e308, 85.23, 1e21}) {
    const auto back = parseDouble(shortestText(value));
    ASSERT_TRUE(back.has_value());
    EXPECT_EQ(*back, value);
    EXPECT_EQ(std::signbit(*back), std::signbit(value));
  }
  EXPECT_EQ(parseDouble(shortestText(-kInfinity)), -kInfinity);
  EXPECT_TRUE(std::isnan(*parseDouble(shortestText(std::nan("")))));
}

TEST(NumberText, OutOfRange_TakesTheNearestEnd) {
  EXPECT_EQ(parseDouble("1e400"), kInfinity);
  EXPECT_EQ(parseDouble("-1e400"), -kInfinity);
  EXPECT_EQ(parseDouble("1e-400"), 0.0);
  EXPECT_EQ(parseDouble("0." + std::string(400, '0') + "1"), 0.0);
  EXPECT_EQ(parseDouble("0.0001e99999999999999999999"), kInfinity);
  EXPECT_EQ(parseDouble(std::string(400, '9')), kInfinity);
}

TEST(NumberText, PartlyNumber_IsNone) {
  for (const char* text : {"", "+", "-", "+-1", "1 ", " 1", "1x", "0x10", "1,5", "--1"}) {
    EXPECT_EQ(parseDouble(text), std::nullopt) << text;
    EXPECT_EQ(parseInteger(text), std::nullopt) << text;
  }
  EXPECT_EQ(parseInteger("9223372036854775808"), std::nullopt);
  EXPECT_EQ(parseInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
}

}  // namespace
}  // namespace fexora
