// Fixed texts in many locales; plain amounts of any kind are in fuzz/amounts.cpp.
#include "fexora/input/AmountParsing.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/values/NSNumber.h"

#include "tests/support/LocaleScope.h"

namespace fexora {
namespace {

using test::LocaleScope;

using Locales = std::vector<const char*>;

// Their mark is the point or the comma.
const Locales kEitherMark = {"C",     "en_US", "en_IN", "hi_IN", "de_CH", "ja_JP", "th_TH",
                             "de_DE", "fr_FR", "sv_SE", "ru_RU", "pt_BR", "es_ES", "en_ZA"};
// Theirs is neither.
const Locales kOtherMark = {"ar_EG", "fa_IR"};

TEST(AmountParsing, TheLocalesMarks) {
  struct Row {
    Locales locales;
    const char* text;
    std::optional<double> expected;
  };
  for (const Row& row :
       std::vector<Row>{{kEitherMark, "12.5", 12.5},
                        {kEitherMark, "12,5", 12.5},
                        {kEitherMark, "-0.25", -0.25},
                        {kEitherMark, "1234567", 1234567},
                        {kEitherMark, "1,234.5", {}},
                        {kEitherMark, "1.234,5", {}},
                        {kEitherMark, "1,234,567", {}},
                        {kEitherMark, "abc", {}},
                        {kEitherMark, "", {}},
                        {kEitherMark, ",", {}},
                        {kOtherMark, "12٫5", 12.5},
                        {kOtherMark, "12.5", {}},
                        {kOtherMark, "12,5", {}},
                        {kOtherMark, "12.345", {}},
                        {kOtherMark, "12345", 12345},
                        {{"ar_EG"}, "١٢٫٥", 12.5},
                        {{"fr_FR"}, "1\u202F234.5", 1234.5},
                        {{"de_CH"}, "1’234,5", 1234.5},
                        {{"en_US"}, "1 234,5", 1234.5},
                        // Sixteen digits are beyond the plain way.
                        {{"en_US", "de_DE"}, "95142426273599.37", 95142426273599.37},
                        {{"en_US", "ar_EG"}, "9007199254740993", 9007199254740993.0}}) {
    for (const char* locale : row.locales) {
      const LocaleScope scope(locale);
      EXPECT_EQ(parseAmount(row.text), row.expected) << row.text << " in " << locale;
    }
  }
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

TEST(AmountParsing, TextBeyondTheLimit_IsNoNumber) {
  const LocaleScope scope("en_US");
  EXPECT_EQ(parseAmount("0." + std::string(limits::kAmountBytes - 2, '0')), 0.0);
  EXPECT_EQ(parseAmount("0." + std::string(limits::kAmountBytes - 1, '0')), std::nullopt);
}

}  // namespace
}  // namespace fexora
