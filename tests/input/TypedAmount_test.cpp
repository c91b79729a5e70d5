// The rules of readAmount, text by text; what ICU writes is in WrittenAmounts_test.cpp.
#include "fexora/input/TypedAmount.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/catalogue/CurrencySigns.h"
#include "fexora/input/TypedNumber.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/text/ProcessText.h"

namespace fexora {
namespace {

using By = TypedAmount::CurrencyBy;
using Kind = TypedAmount::Kind;

constexpr const char* kEverywhere[] = {"C", "en_US", "de_DE", "fr_FR", "de_CH", "en_IN", "ar_EG"};

TEST(TypedAmount, WhatReadsTheSameEverywhere) {
  struct Row {
    const char* text;
    double value;
  };
  for (const Row& row : std::initializer_list<Row>{{"7", 7},
                                                   {"007", 7},
                                                   {"12.5", 12.5},
                                                   {"12,5", 12.5},
                                                   {".5", .5},
                                                   {"-,5", -.5},
                                                   {"5.", 5},
                                                   {"0.125", .125},
                                                   {"0,125", .125},
                                                   {"1234.567", 1234.567},
                                                   {"1234,567", 1234.567},
                                                   {"012,345", 12.345},
                                                   {",123", .123},
                                                   {"1,234.5", 1234.5},
                                                   {"1.234,5", 1234.5},
                                                   {"1.234,567", 1234.567},
                                                   {"1,234,567", 1234567},
                                                   {"1.234.567", 1234567},
                                                   {"1,234,567.125", 1234567.125},
                                                   {"1 234", 1234},
                                                   {"1\u00A0234,567", 1234.567},
                                                   {"1\u202F234\u2009567", 1234567},
                                                   {"1_000", 1000},
                                                   {"1'234.5", 1234.5},
                                                   {"1’234", 1234},
                                                   {"1'234’567", 1234567},
                                                   {"1٬234", 1234},
                                                   {"1٫234", 1.234},
                                                   {"١٬٢٣٤٫٥", 1234.5},
                                                   {"१२.५", 12.5},
                                                   {"１，２３４．５", 1234.5},
                                                   {"  5 ", 5},
                                                   {"+5", 5},
                                                   {"- 5", -5},
                                                   {"\u22125", -5},
                                                   {"5-", -5},
                                                   {"5,-", 5},
                                                   {"5.--", 5},
                                                   {"-5,\u2014\u2014", -5},
                                                   {"500/-", 500},
                                                   {"\u200E-\u061C5", -5},
                                                   {"1$50", 1.5},
                                                   {"-0", -0.0},
                                                   {"9007199254740993", 9007199254740993.0},
                                                   {"0.1000000000000000055511151231257827", .1},
                                                   {"95142426273599.375", 95142426273599.375}}) {
    for (const char* locale : kEverywhere) {
      const TypedAmount read = readAmount(row.text, locale);
      EXPECT_EQ(read.kind, Kind::exact) << row.text << " in " << locale << ": " << read.reason;
      EXPECT_EQ(read.value, row.value) << row.text << " in " << locale;
      EXPECT_EQ(read.other, std::nullopt);
      EXPECT_EQ(read.currencyBy, By::none);
    }
  }
}

TEST(TypedAmount, OneOpenMark_IsTheLocalesOrAmbiguous) {
  struct Row {
    const char* locale;
    const char* text;
    double value;
    std::optional<double> other;
  };
  for (const Row& row : std::initializer_list<Row>{
           {"en_US", "1.234", 1.234, {}},
           {"en_US", "1,234", 1234, 1.234},
           {"en_US", "-999,000", -999000, -999},
           {"en_US", "1,000 USD", 1000, 1},
           {"de_DE", "1,234", 1.234, {}},
           {"de_DE", "1.234 €", 1234, 1.234},
           // Neither of the locale's: the decimal mark, as parseAmount has it.
           {"fr_FR", "1.234", 1.234, 1234},
           {"de_CH", "1,234", 1.234, 1234},
           {"en_IN", "12,34,567", 1234567, {}},
           {"hi_IN", "₹12,34,567.50", 1234567.5, {}},
           {"ur_IN", "INR 12,34,567", 1234567, {}},
           // Yen have no smaller unit, euros none of a thousandth.
           {"de_DE", "¥1,234", 1234, {}},
           {"de_DE", "¥1.234", 1234, {}},
           {"en_US", "1.234 JPY", 1.234, 1234},
           {"en_US", "€1.234", 1.234, 1234},
           {"de_DE", "$1,234", 1.234, 1234},
           {"en_US", "BTC 1.234", 1.234, {}},
           {"en_US", "1,234e3", 1234000, 1234},
           {"en_US", "1.234e3", 1234, {}},
           {"en_US", "1.231e306", 1.231e306, {}},
           {"de_DE", "1.231e-400", 0, {}},
           // As parseAmount reads it there.
           {"de_DE", "-1,5E-1 €", -.15, {}},
           {"sv_SE", "5×10^3", 5000, {}}}) {
    const TypedAmount read = readAmount(row.text, row.locale);
    EXPECT_EQ(read.kind, row.other ? Kind::ambiguous : Kind::exact)
        << row.text << " in " << row.locale << ": " << read.reason;
    EXPECT_EQ(read.value, row.value) << row.text << " in " << row.locale;
    EXPECT_EQ(read.other, row.other) << row.text << " in " << row.locale;
  }
}

// Which locales have such marks changes with the Unicode CLDR.
TEST(TypedAmount, MarksOfMoneyThatAreTheOthersElsewhere) {
  const NumberMarks swapped{U',', U'.', U'.', U','};
  const auto read = [&](const char* text, std::string_view code) {
    const TypedSymbols typed = typedSymbols(text);
    const NumberReading number = readNumber(typed.symbols, {swapped, moneyOf(code)});
    return std::pair(number.value, number.other.value_or(number.value));
  };
  EXPECT_EQ(read("1,234", ""), std::pair(1.234, 1.234));
  EXPECT_EQ(read("1.234", "EUR"), std::pair(1.234, 1234.0));
  EXPECT_EQ(read("1,234", "EUR"), std::pair(1234.0, 1.234));
}

TEST(TypedAmount, WhatIsNoAmount_SaysWhere) {
  struct Row {
    const char* text;
    std::size_t place;
  };
  for (const Row& row : std::initializer_list<Row>{{"", 0},
                                                   {"€", 0},
                                                   {"-", 0},
                                                   {".", 0},
                                                   {"1.2.3", 3},
                                                   {"12,34,5", 5},
                                                   {"1,2345,678", 1},
                                                   {"0,123,456", 0},
                                                   {"1,,234", 1},
                                                   {"1 23", 1},
                                                   {"1234 567", 0},
                                                   {"1.234 567", 5},
                                                   {"1,234.567,890", 5},
                                                   {"1.234.567,8.9", 9},
                                                   {"1٫2٫3", 1},
                                                   {"1 234'567", 5},
                                                   {"12a34", 2},
                                                   {"1-2", 1},
                                                   {"--5", 0},
                                                   {"-5-", 2},
                                                   {"5+", 1},
                                                   {"5K", 1},
                                                   {"5 xyz", 2},
                                                   {"$5 EUR", 3},
                                                   {"€ 5 GBP", 6},
                                                   {"kr$5", 0},
                                                   {"5$3", 1},
                                                   {"1e400", 0},
                                                   {"1.231e400", 0},
                                                   {"1,231e400", 0},
                                                   {"1,231e306", 0},
                                                   {"1e", 1},
                                                   {"1﹐234", 1},
                                                   {"1․234", 1},
                                                   {"EUR,500", 0},
                                                   {"5\xFF", 1},
                                                   {"½", 0},
                                                   {"∞", 0},
                                                   {"NaN", 0},
                                                   {"\u00A05\tEUR", 3}}) {
    const TypedAmount read = readAmount(row.text, "en_US");
    EXPECT_EQ(read.kind, Kind::refused) << row.text << ": " << read.value;
    EXPECT_EQ(read.place, row.place) << row.text << ": " << read.reason;
    EXPECT_FALSE(read.reason.empty()) << row.text;
    EXPECT_EQ(read.value, 0.0);
  }
  const std::string longest(limits::kAmountBytes, '0');
  EXPECT_EQ(readAmount(longest).kind, Kind::exact);
  EXPECT_EQ(readAmount(longest + '0').place, limits::kAmountBytes);
  EXPECT_EQ(readAmount(std::string(limits::kAmountBytes, '9'), "C").kind, Kind::refused);
}

TEST(TypedAmount, Currencies) {
  struct Row {
    const char* locale;
    const char* text;
    const char* code;
    By by;
    double value = 5;
  };
  for (const Row& row :
       std::initializer_list<Row>{{"C", "$5", "USD", By::trade},
                                  {"en_CA", "$5", "CAD", By::region},
                                  {"de_DE", "5 $", "USD", By::trade},
                                  {"es_419", "$ 5", "USD", By::trade},
                                  {"zh-Hant-TW", "＄5", "TWD", By::region},
                                  {"zh_Hant", "$5", "TWD", By::region},
                                  {"da_DK", "5 kr.", "DKK", By::region},
                                  {"nb", "kr\u00A05", "NOK", By::region},
                                  {"de_DE", "5kr", "SEK", By::trade},
                                  {"ja_JP", "¥5", "JPY", By::region},
                                  {"zh_CN", "¥5", "CNY", By::region},
                                  {"en_GB", "-£5", "GBP", By::region, -5},
                                  {"en_US", "€ 5", "EUR", By::sign},
                                  {"en_US", "$-5", "USD", By::region, -5},
                                  {"nl_NL", "€ -5,00", "EUR", By::sign, -5},
                                  {"fy_NL", "€ 5,00-", "EUR", By::sign, -5},
                                  {"pl_PL", "1 234,50 zł", "PLN", By::sign, 1234.5},
                                  {"en_US", "Rs.5", "INR", By::trade},
                                  {"en_US", "$.5", "USD", By::region, .5},
                                  {"es_PE", "S/.100", "PEN", By::sign, 100},
                                  {"id_ID", "Rp.50000", "IDR", By::sign, 50000},
                                  {"en_US", "5 Fr.", "CHF", By::sign},
                                  {"en_US", "USD.500", "USD", By::code, 500},
                                  {"en_US", "5 GBp", "GBP", By::code, .05},
                                  {"en_US", "zac5", "ZAR", By::code, .05},
                                  {"en_US", "AUD $5", "AUD", By::code},
                                  {"fr_BJ", "F\u202FCFA\u00A0-5", "XOF", By::sign, -5},
                                  {"en_US", "5.- €", "EUR", By::sign},
                                  {"ar_EG", "\u200F٥ د.إ.\u200F", "AED", By::sign},
                                  {"de_DE", "5USD", "USD", By::code},
                                  {"de_DE", "eur 5", "EUR", By::code},
                                  {"en_US", "5. EUR", "EUR", By::code},
                                  {"en_US", "5E", "SZL", By::sign},
                                  {"en_US", "1INCH 5", "1INCH", By::code},
                                  {"en_US", "5 1inch", "1INCH", By::code},
                                  {"en_US", "$5 CAD", "CAD", By::code},
                                  {"en_US", "CAD 5 $", "CAD", By::code},
                                  {"en_US", "US$5 USD", "USD", By::code}}) {
    const TypedAmount read = readAmount(row.text, row.locale);
    EXPECT_EQ(read.kind, Kind::exact) << row.text << ": " << read.reason;
    EXPECT_EQ(read.value, row.value) << row.text << " in " << row.locale;
    EXPECT_EQ(read.currency, row.code) << row.text << " in " << row.locale;
    EXPECT_EQ(read.currencyBy, row.by) << row.text << " in " << row.locale;
  }
  EXPECT_EQ(codesOfSign("円").front(), "JPY");
}

TEST(TypedAmount, AsciiInPlainLocales_OpensNoModule) {
  int opened = 0;
  ProcessText text([&] {
    ++opened;
    return fexora_text_module();
  });
  for (const char* typed : {"1,234", "$1,234.50", "EUR 5", "1e3", "1.2.3", "5 xyz"}) {
    for (const char* locale : {"C", "en_US", "en_GB"}) readAmount(typed, locale, text);
  }
  EXPECT_EQ(readAmount("€1٫5", "en_US", text).value, 1.5);
  EXPECT_EQ(opened, 0);
  EXPECT_EQ(readAmount("1.234", "de_DE", text).value, 1234);
  EXPECT_EQ(opened, 1);
}

}  // namespace
}  // namespace fexora
