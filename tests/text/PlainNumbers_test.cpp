// The plain number form must be exactly what the text module does for the locales that have it.
#include "fexora/platform/text/PlainNumbers.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/text/Decimal.h"
#include "fexora/platform/text/Locale.h"

namespace fexora {
namespace {

constexpr const char* kLocales[] = {"en",    "en_US", "en_GB", "en_AU", "en_CA", "en_IE",
                                    "en_NZ", "en_SG", "en_HK", "en_PH", "C",     "POSIX"};

// Bits and all, so that the two zeros differ.
std::string shown(std::optional<double> value) {
  if (!value) return "none";
  std::uint64_t bits = 0;
  std::memcpy(&bits, &*value, sizeof(bits));
  return std::to_string(*value) + " " + std::to_string(bits);
}

std::string randomText(std::mt19937& random) {
  constexpr std::string_view kAlphabets[] = {"0123456789..,,-+Ee '", "12,'. -E", "0159,.", "123,E-",
                                             "NaN0 \t-+$%()x_"};
  const std::string_view alphabet = kAlphabets[random() % std::size(kAlphabets)];
  std::string text(random() % 24, '\0');
  for (char& c : text) c = alphabet[random() % alphabet.size()];
  return text;
}

double randomDouble(std::mt19937& random) {
  const double sign = random() % 2 == 0 ? 1.0 : -1.0;
  switch (random() % 3) {
    case 0: {
      const std::uint64_t bits = (std::uint64_t{random()} << 32U) | random();
      double any = 0;
      std::memcpy(&any, &bits, sizeof(any));
      return any;
    }
    case 1:
      return sign * static_cast<double>(random() % 1000000) / 8.0;  // many ties
    default:
      return sign *
             std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 120) - 60);
  }
}

TEST(PlainNumbers, RandomTexts_AreReadAsTheModuleReadsThem) {
  std::mt19937 random(20260929);
  for (int i = 0; i < 60000; ++i) {
    const std::string typed = randomText(random);
    const char* const locale = kLocales[random() % std::size(kLocales)];
    ASSERT_TRUE(Locale::hasPlainNumbers(locale)) << locale;
    std::optional<int> digits;
    if (random() % 3 == 0) digits = static_cast<int>(random() % 5);
    ASSERT_EQ(shown(parsePlainNumber(typed, digits)),
              shown(fexora_text_module()->parseNumber(typed, locale, digits)))
        << "'" << typed << "' in " << locale << ", digits " << digits.value_or(-1);
  }
}

TEST(PlainNumbers, RandomNumbers_AreWrittenAsTheModuleWritesThem) {
  std::mt19937 random(20260930);
  for (int i = 0; i < 30000; ++i) {
    const double value = randomDouble(random);
    const char* const locale = kLocales[random() % std::size(kLocales)];
    const NumberStyle style{static_cast<int>(random() % 25), static_cast<int>(random() % 6),
                            random() % 2 == 0};
    ASSERT_EQ(formatPlainNumber(value, style),
              fexora_text_module()->formatNumber(value, locale, style))
        << value << " in " << locale;
  }
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
  const auto rounded = [](const char* text, int digits) {
    auto number = Decimal::fromText(text);
    number->round(digits);
    return number->integerDigits() + "." + number->fractionDigits();
  };
  EXPECT_EQ(rounded("0.5", 0), "0.");
  EXPECT_EQ(rounded("1.5", 0), "2.");
  EXPECT_EQ(rounded("0.51", 0), "1.");
  EXPECT_EQ(rounded("0.05", 0), "0.");
  EXPECT_EQ(rounded("0.0951", 2), "0.1");
  EXPECT_EQ(rounded("999.995", 2), "1000.");
  EXPECT_EQ(rounded("1.25E-2", 3), "0.012");
  EXPECT_EQ(rounded("12E3", 2), "12000.");
}

}  // namespace
}  // namespace fexora
