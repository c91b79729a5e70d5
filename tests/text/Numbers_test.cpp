// Numbers without the text module. That plain ones are read and written as by the module is held by
// fuzz/amounts.cpp.
#include <cmath>
#include <limits>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "fexora/platform/text/Decimal.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/platform/text/PlainNumbers.h"

namespace fexora {
namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

TEST(NumberText, ReadsBackTheSameDouble) {
  for (const double value : {0.1, 1.0 / 3, -0.0, 5e-324, 1.7976931348623157e308, 85.23, 1e21}) {
    const auto back = parseDouble(shortestText(value));
    ASSERT_TRUE(back.has_value());
    EXPECT_EQ(*back, value);
    EXPECT_EQ(std::signbit(*back), std::signbit(value));
  }
  EXPECT_EQ(parseDouble(shortestText(-kInfinite)), -kInfinite);
  EXPECT_TRUE(std::isnan(*parseDouble(shortestText(std::nan("")))));
}

TEST(NumberText, OutOfRange_TakesTheNearestEnd) {
  for (const std::string& text :
       {std::string("1e400"), std::string("0.0001e99999999999999999999"), std::string(400, '9')}) {
    EXPECT_EQ(parseDouble(text), kInfinite) << text;
    EXPECT_EQ(parseDouble("-" + text), -kInfinite) << text;
  }
  EXPECT_EQ(parseDouble("1e-400"), 0.0);
  EXPECT_EQ(parseDouble("0." + std::string(400, '0') + "1"), 0.0);
}

TEST(NumberText, PartlyNumber_IsNone) {
  for (const char* text : {"", "+", "-", "+-1", "1 ", " 1", "1x", "0x10", "1,5", "--1"}) {
    EXPECT_EQ(parseDouble(text), std::nullopt) << text;
    EXPECT_EQ(parseInteger(text), std::nullopt) << text;
  }
  EXPECT_EQ(parseInteger("9223372036854775808"), std::nullopt);
  EXPECT_EQ(parseInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
}

TEST(PlainNumbers, OddTexts_AreNumbersOrNot) {
  for (const char* typed : {"5.", ".5", "-.5", "1e5", "1E+05", "1,234", "1'234", "1 234", "0001"}) {
    EXPECT_TRUE(parsePlainNumber(typed, {}).has_value()) << typed;
  }
  for (const char* typed :
       {"", "+5", " 5", "5 ", "- 5", "--5", ".", "-", "1E", "E5", "1E5.5", "inf", "NaN", "0x1",
        "1,23", "1,,234", "1.2.3", "1,234'567", "12345,678"}) {
    EXPECT_EQ(parsePlainNumber(typed, {}), std::nullopt) << typed;
  }
  EXPECT_EQ(parsePlainNumber("0E99999999999999999999", {}), 0.0);
}

TEST(Decimal, Rounding_TiesGoToEvenAndNinesCarry) {
  using Row = std::tuple<const char*, int, const char*>;
  for (const auto& [text, digits, expected] :
       {Row("0.5", 0, "0."), Row("1.5", 0, "2."), Row("0.51", 0, "1."), Row("0.05", 0, "0."),
        Row("0.0951", 2, "0.1"), Row("999.995", 2, "1000."), Row("1.25E-2", 3, "0.012"),
        Row("12E3", 2, "12000.")}) {
    auto number = Decimal::fromText(text);
    number->round(digits);
    EXPECT_EQ(number->integerDigits() + "." + number->fractionDigits(), expected) << text;
  }
}

}  // namespace
}  // namespace fexora
