// The text module: Unicode rules and the numbers and names of many locales.
#include <atomic>
#include <cmath>
#include <limits>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/text/DecimalDigits.h"
#include "fexora/platform/text/Text.h"

namespace fexora {
namespace {

constexpr int kUnicodeDigits = 16;  // the version of our table of digits
constexpr double kInfinity = std::numeric_limits<double>::infinity();

Text& text() {
  return *fexora_text_module();
}

TEST(UnicodeText, LowerCaseAndCanonicalForm) {
  EXPECT_EQ(text().lowercased("ÇİI ΟΔΟΣ \u212A 円 ẞ"), "çi\u0307i οδος k 円 ß");
  EXPECT_EQ(text().canonical("\u1E69 한"), text().canonical("s\u0307\u0323 \u1112\u1161\u11AB"));
  EXPECT_NE(text().canonical("ﬁ"), text().canonical("fi"));
  EXPECT_TRUE(equalText(text(), "K", "\u212A"));
  EXPECT_FALSE(equalText(text(), "e", "\u00E9"));
}

TEST(UnicodeText, DecimalDigits_AreTheOnesOfUnicode) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    // What came into Unicode after our table, or after this machine's, has no say.
    UVersionInfo age{};
    u_charAge(static_cast<UChar32>(c), age);
    if (age[0] == 0 || age[0] > kUnicodeDigits) continue;
    const int value = u_charDigitValue(static_cast<UChar32>(c));
    ASSERT_EQ(decimalDigit(c).value_or(-1), value) << static_cast<unsigned>(c);
  }
}

TEST(UnicodeText, Folded_LeavesNoCaseAndNoAccents) {
  const std::pair<const char*, const char*> rows[] = {
      {"Złoty Ångström", "zloty angstrom"},
      {"STRAẞE ﬁ ￥", "strasse fi ¥"},
      {"İstanbul ıslak", "istanbul islak"},
      {"Δραχμή ΟΔΟΣ", "δραχμη οδοσ"},
      {"إِيرَان", "ايران"},
      {"ドル ト\u3099ル", "ドル ドル"},
      {"हिन्दी रुपया", "हिन्दी रुपया"},
      {"Ёлка \xFF", "елка \uFFFD"},
  };
  for (const auto& [plain, folded] : rows) EXPECT_EQ(text().folded(plain), folded) << plain;
}

// Sorted into order they would take time by the square of their number.
TEST(UnicodeText, MarksBeyondThirty_KeepTheirOrder) {
  const auto repeated = [](const char* marks, int count) {
    std::string run;
    while (count-- > 0) run += marks;
    return run;
  };
  const std::string below = "\u0323";
  for (const int above : {29, 30}) {
    const std::string marks = repeated("\u0301", above);
    EXPECT_EQ(text().canonical("a" + below + marks) == text().canonical("a" + marks + below),
              above == 29);
  }
  const std::string run = repeated("\u0301\u0323", 50'000);
  EXPECT_EQ(text().folded("a" + run + "é" + run), "ae");
  EXPECT_EQ(text().folded("\u30C8" + run + "\u3099"), "ト");
}

TEST(UnicodeText, RegionNames_AreThoseOfALanguageOrTheRegionsOwn) {
  using Names = std::vector<std::string>;
  EXPECT_EQ(text().regionNames("GB", "en"), (Names{"United Kingdom", "UK"}));
  EXPECT_EQ(text().regionNames("CH", "fr_FR"), (Names{"Suisse"}));
  EXPECT_EQ(text().regionNames("JP", ""), (Names{"日本"}));
  for (const char* none : {"QQ", "", "x\xFF", "Switzerland"}) {
    EXPECT_EQ(text().regionNames(none, "en"), Names{}) << none;
    EXPECT_EQ(text().regionNames(none, ""), Names{}) << none;
  }
}

TEST(UnicodeText, Characters_AreTheOnesPeopleSee) {
  const std::pair<std::string, std::vector<std::size_t>> rows[] = {{"", {}},
                                                                   {"a\r\nb", {1, 3, 4}},
                                                                   {"e\u0301x", {3, 4}},
                                                                   {"🇩🇪🇫🇷", {8, 16}},
                                                                   {"\xFF\x41", {1, 2}}};
  for (const auto& [whole, ends] : rows) {
    EXPECT_EQ(text().characterEnds(whole), ends) << whole;
    EXPECT_EQ(text().characterCount(whole), ends.size()) << whole;
  }
}

TEST(UnicodeText, Containment_RespectsWholeCharacters) {
  using Pair = std::pair<const char*, const char*>;
  for (const auto& [whole, part] :
       {Pair("café noir", "e\u0301"), Pair("cafe\u0301 noir", "é n"),
        Pair("cafe\u0301 et the", "e"),  // the later one
        Pair("👩\u200D👧👩", "👩"), Pair("🇩🇪🇫🇷", "🇫🇷"), Pair("a\r\nb", "\r\n")}) {
    EXPECT_TRUE(text().contains(whole, part)) << whole << " / " << part;
  }
  for (const auto& [whole, part] :
       {Pair("café noir", "e"), Pair("cafe\u0301", "\u0301"), Pair("각", "가"), Pair("🇩🇪🇫🇷", "🇪🇫"),
        Pair("a\r\nb", "\n"), Pair("é", ""), Pair("", "é"), Pair("É", "é")}) {
    EXPECT_FALSE(text().contains(whole, part)) << whole << " / " << part;
  }
}

TEST(UnicodeText, ParseNumber_ReadsEachLocalesOwnForm) {
  using Case = std::tuple<const char*, const char*, std::optional<double>>;
  for (const auto& [locale, typed, value] :
       {Case("de_DE", "1.234,5", 1234.5), Case("de_DE", "1.5", {}),
        Case("sv_SE", "\u22125,25", -5.25), Case("hi_IN", "12,34,567.5", 1234567.5),
        Case("hi_IN", "१२.५", 12.5), Case("fa_IR", "۱۲۳", 123.0), Case("en_US", "∞", kInfinity),
        Case("en_US", "1E400", kInfinity), Case("en_US", "NaN", {}), Case("en_US", "5\xFF", {}),
        Case("tlh", "1,234.5", 1234.5),  // no data: the plain form
        // Zero, however large its exponent.
        Case("de_DE", "0,0e9999999999", 0.0), Case("en_US", "0E2147483648", 0.0),
        Case("fa_IR", "۰×۱۰^۹۹۹۹۹۹۹۹۹۹", 0.0), Case("fa_IR", "۲×۱۰^۹۹۹۹۹۹۹۹۹۹", kInfinity)}) {
    EXPECT_EQ(text().parseNumber(typed, locale, {}), value) << locale << " " << typed;
  }
  const std::string longest(limits::kAmountBytes, '1');
  EXPECT_EQ(text().parseNumber(longest, "de_DE", 0), kInfinity);
  EXPECT_EQ(text().parseNumber(longest + "1", "de_DE", 0), std::nullopt);
}

TEST(UnicodeText, ParseNumber_RoundsTheDigitsAsTypedHalfToEven) {
  using Case = std::tuple<const char*, int, double>;
  for (const auto& [typed, digits, value] :
       {Case("2,675", 2, 2.68),  // the double is below 2.675
        Case("0,125", 2, 0.12), Case("9,995", 2, 10.0), Case("0,5", -1, 0.0),
        Case("1,5E3", 0, 1500.0), Case("∞", 2, kInfinity)}) {
    EXPECT_EQ(text().parseNumber(typed, "de_DE", digits), value) << typed;
  }
  EXPECT_TRUE(std::signbit(*text().parseNumber("-0,001", "de_DE", 2)));
}

TEST(UnicodeText, FormatNumber_WritesEachLocalesOwnForm) {
  const NumberStyle two{.maximumFractionDigits = 2, .minimumFractionDigits = 2, .grouping = true};
  const NumberStyle ungrouped{.maximumFractionDigits = 9, .grouping = false};
  using Case = std::tuple<double, const char*, NumberStyle, const char*>;
  for (const auto& [value, locale, style, shown] :
       {Case(1234567.125, "de_DE", two, "1.234.567,12"), Case(1234.5, "ar_EG", two, "١٬٢٣٤٫٥٠"),
        Case(1234567.5, "hi_IN", two, "12,34,567.50"),
        Case(-1234.5, "sv_SE", two, "\u22121\u00A0234,50"),
        Case(1234.5, "de_DE", ungrouped, "1234,5"), Case(-kInfinity, "de_DE", two, "-∞"),
        Case(std::nan(""), "de_DE", two, "NaN"),
        Case(-0.001, "de_DE", {.maximumFractionDigits = 2}, "0"),
        Case(0.5, "de_DE", {-7, 99, true}, "0")}) {
    EXPECT_EQ(text().formatNumber(value, locale, style), shown);
  }
}

TEST(UnicodeText, CurrencyName_ComesInTheAskedLanguageOnly) {
  EXPECT_EQ(text().currencyName("USD", "C"), "US Dollar");
  EXPECT_EQ(text().currencyName("JPY", "de_AT"), "Japanischer Yen");
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
  std::atomic<int> wrong = 0;
  for (std::size_t t = 0; t < 4; ++t) {
    threads.emplace_back([&, t] {
      for (std::size_t i = t; i < t + 300; ++i) {
        const std::size_t which = i % expected.size();
        if (answer(locales[which]) != expected[which]) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace fexora
