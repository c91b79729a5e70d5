// Fixed texts; that they are read and written as by the text module is held by fuzz/amounts.cpp.
#include "fexora/platform/text/PlainNumbers.h"

#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/text/Decimal.h"

namespace fexora {
namespace {

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
  struct Row {
    const char* text;
    int digits;
    const char* expected;
  };
  for (const auto& [text, digits, expected] : std::vector<Row>{{"0.5", 0, "0."},
                                                               {"1.5", 0, "2."},
                                                               {"0.51", 0, "1."},
                                                               {"0.05", 0, "0."},
                                                               {"0.0951", 2, "0.1"},
                                                               {"999.995", 2, "1000."},
                                                               {"1.25E-2", 3, "0.012"},
                                                               {"12E3", 2, "12000."}}) {
    auto number = Decimal::fromText(text);
    number->round(digits);
    EXPECT_EQ(number->integerDigits() + "." + number->fractionDigits(), expected) << text;
  }
}

}  // namespace
}  // namespace fexora
