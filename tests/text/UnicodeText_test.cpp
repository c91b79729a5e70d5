// The text module: Unicode rules and the numbers and names of many locales.
#include <cmath>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/text/Text.h"

namespace fexora {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

Text& text() {
  return *fexora_text_module();
}

TEST(UnicodeText, LowerCase_IsTheSameInEveryLocale) {
  EXPECT_EQ(text().lowercased("ÄÖÜ ÇİI ДЖ"), "äöü çi\u0307i дж");
  EXPECT_EQ(text().lowercased("ΟΔΟΣ"), "οδος");
  EXPECT_EQ(text().lowercased("\u212A\u212B"), "k\u00E5");
  EXPECT_EQ(text().lowercased("日本円 ريال ẞ"), "日本円 ريال ß");
}

TEST(UnicodeText, Canonical_IsOneFormForEquivalentTexts) {
  EXPECT_EQ(text().canonical("\u00E9"), "e\u0301");
  EXPECT_EQ(text().canonical("\u1E69"), text().canonical("s\u0307\u0323"));
  EXPECT_EQ(text().canonical("\u212A"), "K");
  EXPECT_EQ(text().canonical("한"), text().canonical("\u1112\u1161\u11AB"));
  EXPECT_NE(text().canonical("ﬁ"), text().canonical("fi"));
  EXPECT_TRUE(equalText(text(), "Peso\u0301", "Pes\u00F3"));
  EXPECT_TRUE(equalText(text(), "K", "\u212A"));
  EXPECT_FALSE(equalText(text(), "e", "\u00E9"));
}

TEST(UnicodeText, Characters_AreTheOnesPeopleSee) {
  struct Case {
    std::string text;
    std::vector<std::size_t> ends;
  };
  const Case cases[] = {
      {"", {}},
      {"USD", {1, 2, 3}},
      {"a\r\nb", {1, 3, 4}},
      {"e\u0301x", {3, 4}},
      {"\u1112\u1161\u11AB", {9}},
      {"👩\u200D👩\u200D👧", {18}},
      {"🇩🇪🇫🇷", {8, 16}},
      {"நி", {6}},
      {"\xFF\x41", {1, 2}},
  };
  for (const auto& [whole, ends] : cases) {
    EXPECT_EQ(text().characterEnds(whole), ends) << whole;
    EXPECT_EQ(text().characterCount(whole), ends.size()) << whole;
  }
}

TEST(UnicodeText, Containment_RespectsWholeCharacters) {
  struct Case {
    std::string whole, part;
    bool contained;
  };
  const Case cases[] = {
      {"café noir", "é", true},
      {"café noir", "e\u0301", true},
      {"cafe\u0301 noir", "é n", true},
      {"café noir", "e", false},
      {"cafe\u0301 noir", "caf", true},
      {"cafe\u0301 noir", "cafe", false},
      {"cafe\u0301 et the", "e", true},  // the first e is part of é, a later one is not
      {"cafe\u0301", "\u0301", false},
      {"각", "가", false},
      {"각가", "가", true},
      {"\u1100\u1161\u11A8", "각", true},
      {"👩\u200D👧", "👩", false},
      {"👩\u200D👧👩", "👩", true},
      {"🇩🇪🇫🇷", "🇪🇫", false},
      {"🇩🇪🇫🇷", "🇫🇷", true},
      {"a\r\nb", "\n", false},
      {"a\r\nb", "\r\n", true},
      {"é", "", false},
      {"", "é", false},
      {"É", "é", false},
      {"ريال سعودي", "سعودي", true},
  };
  for (const auto& [whole, part, contained] : cases) {
    EXPECT_EQ(text().contains(whole, part), contained) << whole << " / " << part;
  }
}

TEST(UnicodeText, ParseNumber_ReadsEachLocalesOwnForm) {
  struct Case {
    const char *locale, *typed;
    std::optional<double> value;
  };
  const Case cases[] = {
      {"de_DE", "1.234,5", 1234.5},
      {"de_DE", "1.5", std::nullopt},
      {"fr_FR", "1\u202F234,5", 1234.5},
      {"sv_SE", "\u22125,25", -5.25},
      {"de_CH", "1’234.5", 1234.5},
      {"hi_IN", "12,34,567.5", 1234567.5},
      {"hi_IN", "१२.५", 12.5},
      {"ar_EG", "١٢٫٥", 12.5},
      {"ar_EG", "12٫5", 12.5},
      {"ar_EG", "12.345", std::nullopt},
      {"fa_IR", "۱۲۳", 123.0},
      {"fa_IR", "12.5", std::nullopt},
      {"en_US", "∞", kInfinity},
      {"en_US", "1E400", kInfinity},
      {"en_US", "NaN", std::nullopt},
      {"en_US", "5\xFF", std::nullopt},
      {"tlh", "1,234.5", 1234.5},  // no data: the plain form
      {"C", "1,234.5", 1234.5},
      // Zero, however large its exponent.
      {"de_DE", "0,0e9999999999", 0.0},
      {"en_US", "0E2147483648", 0.0},
      {"fa_IR", "۰×۱۰^۹۹۹۹۹۹۹۹۹۹", 0.0},
      {"fa_IR", "۲×۱۰^۹۹۹۹۹۹۹۹۹۹", kInfinity},
  };
  for (const auto& [locale, typed, value] : cases) {
    EXPECT_EQ(text().parseNumber(typed, locale, std::nullopt), value) << locale << " " << typed;
  }
  EXPECT_EQ(text().parseNumber(std::string(limits::kAmountBytes, '1'), "de_DE", 0), kInfinity);
  EXPECT_EQ(text().parseNumber(std::string(limits::kAmountBytes + 1, '1'), "de_DE", 0),
            std::nullopt);
}

TEST(UnicodeText, ParseNumber_RoundsTheDigitsAsTypedHalfToEven) {
  EXPECT_EQ(text().parseNumber("2,675", "de_DE", 2), 2.68);  // the double is below 2.675
  EXPECT_EQ(text().parseNumber("0,125", "de_DE", 2), 0.12);
  EXPECT_EQ(text().parseNumber("9,995", "de_DE", 2), 10.0);
  EXPECT_EQ(text().parseNumber("0,5", "de_DE", -1), 0.0);
  EXPECT_EQ(text().parseNumber("1,5E3", "de_DE", 0), 1500.0);
  EXPECT_EQ(text().parseNumber("∞", "de_DE", 2), kInfinity);
  EXPECT_TRUE(std::signbit(*text().parseNumber("-0,001", "de_DE", 2)));
}

TEST(UnicodeText, FormatNumber_WritesEachLocalesOwnForm) {
  const NumberStyle two{.maximumFractionDigits = 2, .minimumFractionDigits = 2, .grouping = true};
  EXPECT_EQ(text().formatNumber(1234567.125, "de_DE", two), "1.234.567,12");
  EXPECT_EQ(text().formatNumber(1234567.125, "fr_FR", two), "1\u202F234\u202F567,12");
  EXPECT_EQ(text().formatNumber(1234567.5, "hi_IN", two), "12,34,567.50");
  EXPECT_EQ(text().formatNumber(-1234.5, "sv_SE", two), "\u22121\u00A0234,50");
  EXPECT_EQ(text().formatNumber(1234.5, "ar_EG", two), "١٬٢٣٤٫٥٠");
  const NumberStyle ungrouped{.maximumFractionDigits = 9, .grouping = false};
  EXPECT_EQ(text().formatNumber(1234.5, "de_DE", ungrouped), "1234,5");
  EXPECT_EQ(text().formatNumber(-kInfinity, "de_DE", two), "-∞");
  EXPECT_EQ(text().formatNumber(std::nan(""), "de_DE", two), "NaN");
  EXPECT_EQ(text().formatNumber(-0.001, "de_DE", {.maximumFractionDigits = 2}), "0");
  EXPECT_EQ(text().formatNumber(0.5, "de_DE", {-7, 99, true}), "0");
}

TEST(UnicodeText, CurrencyName_ComesInTheAskedLanguageOnly) {
  EXPECT_EQ(text().currencyName("USD", "en_US"), "US Dollar");
  EXPECT_EQ(text().currencyName("USD", "C"), "US Dollar");
  EXPECT_EQ(text().currencyName("JPY", "de_AT"), "Japanischer Yen");
  EXPECT_EQ(text().currencyName("JPY", "ja"), "日本円");
  EXPECT_EQ(text().currencyName("EUR", "ar"), "يورو");
  EXPECT_EQ(text().currencyName("INR", "hi_IN"), "भारतीय रुपया");
  for (const char* code : {"", "US", "USDD", "usd", "QQQ", "1IN"}) {
    EXPECT_EQ(text().currencyName(code, "en"), std::nullopt) << code;
  }
  EXPECT_EQ(text().currencyName("USD", "tlh"), std::nullopt);
}

TEST(UnicodeText, ManyThreadsAndLocales_AnswerAsOneDoes) {
  const char* const locales[] = {"de_DE", "fr_FR", "ar_EG", "hi_IN", "sv_SE", "en_US"};
  const auto answer = [&](const char* locale) {
    return text().formatNumber(1234567.891, locale, {}) + text().decimalSeparator(locale) +
           text().currencyName("JPY", locale).value_or("") + text().lowercased("ÄÉ") +
           std::to_string(text().characterCount("e\u0301👩\u200D👧"));
  };
  std::vector<std::string> expected;
  for (const char* locale : locales) expected.push_back(answer(locale));
  std::vector<std::thread> threads;
  std::vector<int> wrong(4, 0);
  for (std::size_t t = 0; t < wrong.size(); ++t) {
    threads.emplace_back([&, t] {
      for (std::size_t i = 0; i < 300; ++i) {
        const std::size_t which = (i + t) % expected.size();
        if (answer(locales[which]) != expected[which]) ++wrong[t];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

}  // namespace
}  // namespace fexora
