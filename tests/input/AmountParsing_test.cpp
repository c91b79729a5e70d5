#include "fexora/input/AmountParsing.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/values/NSNumber.h"

#include "tests/support/LocaleScope.h"

namespace fexora {
namespace {

using test::LocaleScope;

TEST(AmountParsing, PointAndComma_AreBothTheMarkWhereTheLocalesIsOneOfThem) {
  for (const char* locale : {"C", "en_US", "en_IN", "hi_IN", "de_CH", "ja_JP", "th_TH", "de_DE",
                             "fr_FR", "sv_SE", "ru_RU", "pt_BR", "es_ES", "en_ZA"}) {
    const LocaleScope scope(locale);
    EXPECT_EQ(parseAmount("12.5"), 12.5) << locale;
    EXPECT_EQ(parseAmount("12,5"), 12.5) << locale;
    EXPECT_EQ(parseAmount("-0.25"), -0.25) << locale;
    EXPECT_EQ(parseAmount("1234567"), 1234567.0) << locale;
    EXPECT_EQ(parseAmount("1,234.5"), std::nullopt) << locale;
    EXPECT_EQ(parseAmount("1.234,5"), std::nullopt) << locale;
    EXPECT_EQ(parseAmount("1,234,567"), std::nullopt) << locale;
    EXPECT_EQ(parseAmount("abc"), std::nullopt) << locale;
    EXPECT_EQ(parseAmount(""), std::nullopt) << locale;
    EXPECT_EQ(parseAmount(","), std::nullopt) << locale;
  }
}

TEST(AmountParsing, AnotherMark_OnlyThatOneStartsAFraction) {
  for (const char* locale : {"ar_EG", "fa_IR"}) {
    const LocaleScope scope(locale);
    EXPECT_EQ(parseAmount("12٫5"), 12.5) << locale;
    EXPECT_EQ(parseAmount("12.5"), std::nullopt) << locale;
    EXPECT_EQ(parseAmount("12,5"), std::nullopt) << locale;
    EXPECT_EQ(parseAmount("12.345"), std::nullopt) << locale;
    EXPECT_EQ(parseAmount("12345"), 12345.0) << locale;
  }
  const LocaleScope scope("ar_EG");
  EXPECT_EQ(parseAmount("١٢٫٥"), 12.5);
}

TEST(AmountParsing, OtherGroupingMarks_StayWhatTheLocaleMakesOfThem) {
  const LocaleScope scope("fr_FR");
  EXPECT_EQ(parseAmount("1\u202F234.5"), 1234.5);
  Locale::setCurrent("de_CH");
  EXPECT_EQ(parseAmount("1’234,5"), 1234.5);
  Locale::setCurrent("en_US");
  EXPECT_EQ(parseAmount("1 234,5"), 1234.5);
}

TEST(AmountParsing, BoxedNumber_IsARealAndZeroForWhatIsNone) {
  const LocaleScope scope("de_DE");
  for (const NSNumber& zero :
       {NSNumber(static_cast<const char*>(nullptr)), NSNumber(""),
        NSNumber(std::optional<std::string_view>()), NSNumber("abc"), NSNumber("1.234,5")}) {
    EXPECT_EQ(zero.kind(), NSNumber::Kind::real);
    EXPECT_EQ(zero.doubleValue(), 0.0);
  }
  EXPECT_EQ(NSNumber("7").kind(), NSNumber::Kind::real);
  EXPECT_EQ(NSNumber("7").doubleValue(), 7.0);
  EXPECT_EQ(NSNumber(std::string_view("85,23")).doubleValue(), 85.23);
}

// Short plain amounts take a way of their own, which must agree with the number format's.
TEST(AmountParsing, PlainAmounts_AreWhatTheLocalesFormatReads) {
  std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same texts every time
  std::vector<std::string> texts = {"0", "00", "007", "0.1", "000.10", "5.", ".5", ".", "1.2.3"};
  for (int i = 0; i < 300; ++i) {
    std::string text;
    for (std::size_t digits = 1 + random() % 18; digits > 0; --digits) {
      text += static_cast<char>('0' + random() % 10);
    }
    if (i % 4 != 0) text.insert(random() % (text.size() + 1), ".");
    texts.push_back(text);
  }
  for (const char* name : {"en_US", "de_DE", "hi_IN", "ar_EG", "fa_IR", "de_CH"}) {
    const LocaleScope scope(name);
    const std::string mark = Text::process().decimalSeparator(name);
    for (const std::string& text : texts) {
      std::string marked = text;
      if (mark == ",") std::replace(marked.begin(), marked.end(), '.', ',');
      EXPECT_EQ(parseAmount(text), Text::process().parseNumber(marked, name, {}))
          << text << " in " << name;
    }
  }
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

TEST(AmountParsing, TextBeyondTheLimit_IsNoNumber) {
  const LocaleScope scope("en_US");
  EXPECT_EQ(parseAmount("0." + std::string(limits::kAmountBytes - 2, '0')), 0.0);
  EXPECT_EQ(parseAmount("0." + std::string(limits::kAmountBytes - 1, '0')), std::nullopt);
}

}  // namespace
}  // namespace fexora
