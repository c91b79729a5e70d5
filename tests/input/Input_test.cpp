// What is typed and what JSON holds: amounts in many locales, calculations, odd values. Plain
// amounts of any kind are in fuzz/amounts.cpp.
#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "fexora/input/CalculationDetection.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/mapping/Map.h"
#include "fexora/platform/text/AmountParsing.h"
#include "fexora/records/Transforms.h"

#include "tests/support/Describe.h"
#include "tests/support/LocaleScope.h"
#include "tests/support/Words.h"

namespace fexora::test {
namespace {

TEST(AmountParsing, TheLocalesMarks) {
  // Their mark is the point or the comma; the second ones' is neither.
  const std::string either =
      "C en_US en_IN hi_IN de_CH ja_JP th_TH de_DE fr_FR sv_SE ru_RU pt_BR es_ES en_ZA";
  const std::string other = "ar_EG fa_IR";
  using Row = std::tuple<std::string, std::string, std::optional<double>>;
  for (const auto& [locales, text, expected] :
       {Row(either, "12.5", 12.5), Row(either, "12,5", 12.5), Row(either, "-0.25", -0.25),
        Row(either, "1234567", 1234567), Row(either, "1,234.5", {}), Row(either, "1.234,5", {}),
        Row(either, "1,234,567", {}), Row(either, "abc", {}), Row(either, "", {}),
        Row(either, ",", {}), Row(other, "12٫5", 12.5), Row(other, "12.5", {}),
        Row(other, "12,5", {}), Row(other, "12.345", {}), Row(other, "12345", 12345),
        Row("ar_EG", "١٢٫٥", 12.5), Row("fr_FR", "1\u202F234.5", 1234.5),
        Row("de_CH", "1’234,5", 1234.5), Row("en_US", "1 234,5", 1234.5),
        Row("en_US", "0." + std::string(limits::kAmountBytes - 2, '0'), 0.0),
        Row("en_US", "0." + std::string(limits::kAmountBytes - 1, '0'), {}),
        // Sixteen digits are beyond the plain way.
        Row("en_US de_DE", "95142426273599.37", 95142426273599.37),
        Row("en_US ar_EG", "9007199254740993", 9007199254740993.0)}) {
    for (const std::string& locale : words(locales)) {
      const LocaleScope scope(locale.c_str());
      EXPECT_EQ(parseAmount(text), expected) << text << " in " << locale;
    }
  }
}

TEST(AmountParsing, BoxedNumber_IsARealAndZeroForWhatIsNone) {
  const LocaleScope scope("de_DE");
  for (const NSNumber& zero :
       {NSNumber(static_cast<const char*>(nullptr)), NSNumber(""),
        NSNumber(std::optional<std::string_view>()), NSNumber("abc"), NSNumber("1.234,5")}) {
    EXPECT_TRUE(Value(zero).sameAs(NSNumber(0.0)));
  }
  EXPECT_EQ(NSNumber("7").kind(), NSNumber::Kind::real);
  EXPECT_EQ(NSNumber(std::string("85,23")).doubleValue(), 85.23);
}

TEST(AmountParsing, FractionDigits_BoundWhatIsKept) {
  for (const char* locale : {"en_US", "de_DE"}) {
    const LocaleScope scope(locale);
    EXPECT_EQ(NSNumber("2.675", 2).doubleValue(), 2.68) << locale;
    EXPECT_EQ(NSNumber("0,125", 2).doubleValue(), 0.12) << locale;
    EXPECT_EQ(NSNumber("3.5", 0).doubleValue(), 4.0) << locale;
    EXPECT_EQ(NSNumber("1.23456789").doubleValue(), 1.23456789) << locale;
  }
}

TEST(CalculationDetection, OperatorsAnywhereCount) {
  for (const char* text : {"+", "-", "*", "/"}) {
    EXPECT_TRUE(hasCalculation(text) && isCalcOperation(text)) << text;
  }
  for (const char* text : {"12+3", "-5", " + ", "++", "1/", "٣*٤", "é-"}) {
    EXPECT_TRUE(hasCalculation(text) && !isCalcOperation(text)) << text;
  }
  for (const char* text : {"", "1,5", "1.5", "−5", "2×3", "6÷2", "2∕3", "＋", "+\u0301"}) {
    EXPECT_FALSE(hasCalculation(text) || isCalcOperation(text)) << text;
  }
}

TEST(Transforms, TextsAndNumbers_BecomeWhatIsAskedFor) {
  const LocaleScope scope("de_CH");
  const Value seven = 7;
  const Value real = 0.1;
  const Value text = "1.08";
  EXPECT_EQ(NumberTransform().transformFromJSON(&seven)->kind(), NSNumber::Kind::integer);
  EXPECT_EQ(NumberTransform().transformFromJSON(&text), NSNumber(1.08));
  EXPECT_EQ(StringTrasform().transformFromJSON(&text), "1.08");
  EXPECT_EQ(StringTrasform().transformFromJSON(&seven), "7");
  EXPECT_EQ(StringTrasform().transformFromJSON(&real), "0.1");
  EXPECT_EQ(StringTrasform().transformToJSON(std::nullopt), std::nullopt);
}

TEST(Transforms, OtherValues_LeaveTheFieldAsItWas) {
  const Dictionary values{{"list", Value(Array{1})}, {"null", Value()}, {"date", Value(Date(0))}};
  const DictionarySource source(values);
  Map reading = Map::reading(source);
  NSNumber number = true;
  std::string text = "kept";
  for (const char* key : {"list", "null", "date", "absent"}) {
    reading.bind(key, number, NumberTransform{});
    reading.bind(key, text, StringTrasform{});
  }
  Map writing = Map::writing();
  writing.bind("number", number, NumberTransform{});
  writing.bind("text", text, StringTrasform{});
  EXPECT_EQ(describe(writing.takeResult()),
            describe(Dictionary{{"number", true}, {"text", "kept"}}));
}

}  // namespace
}  // namespace fexora::test
