#include "fexora/input/CalculationDetection.h"

#include <gtest/gtest.h>

namespace fexora {
namespace {

TEST(CalculationDetection, OperatorsAnywhereCount) {
  for (const char* text : {"+", "-", "*", "/"}) {
    EXPECT_TRUE(hasCalculation(text)) << text;
    EXPECT_TRUE(isCalcOperation(text)) << text;
  }
  for (const char* text : {"12+3", "-5", " + ", "++", "1/", "٣*٤", "é-"}) {
    EXPECT_TRUE(hasCalculation(text)) << text;
    EXPECT_FALSE(isCalcOperation(text)) << text;
  }
}

TEST(CalculationDetection, OtherSignsDoNot) {
  for (const char* text : {"", "1,5", "1.5", "−5", "2×3", "6÷2", "2∕3", "＋", "+\u0301"}) {
    EXPECT_FALSE(hasCalculation(text)) << text;
    EXPECT_FALSE(isCalcOperation(text)) << text;
  }
}

}  // namespace
}  // namespace fexora
