// Amounts that ICU writes in each of its locales, plain and as money: readAmount reads them
// exactly, or as one of two readings.
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unicode/currunit.h>
#include <unicode/locid.h>
#include <unicode/numberformatter.h>
#include <unicode/ucurr.h>
#include <unicode/uversion.h>

#include "fexora/catalogue/CurrencyNames.h"
#include "fexora/catalogue/EnglishNames.h"
#include "fexora/input/Sentence.h"
#include "fexora/input/TypedAmount.h"
#include "fexora/platform/text/NumberText.h"

#include "tests/support/VirtualPlatform.h"

namespace fexora {
namespace {

using icu::number::LocalizedNumberFormatter;
using icu::number::NumberFormatter;
using By = TypedAmount::CurrencyBy;
using Kind = TypedAmount::Kind;

constexpr UNumberUnitWidth kWidths[] = {UNUM_UNIT_WIDTH_SHORT, UNUM_UNIT_WIDTH_NARROW,
                                        UNUM_UNIT_WIDTH_ISO_CODE, UNUM_UNIT_WIDTH_FORMAL,
                                        UNUM_UNIT_WIDTH_VARIANT};
// Whether this ICU may write signs that are none of the table's, which is of ICU 72.
constexpr bool kHasNewSigns = U_ICU_VERSION_MAJOR_NUM != 72;
// Formatters of money that one locale is tried with.
constexpr int kCurrencies = 20;

std::vector<std::string> icuCodes() {
  std::vector<std::string> codes;
  UErrorCode error = U_ZERO_ERROR;
  UEnumeration* const all = ucurr_openISOCurrencies(UCURR_ALL, &error);
  while (const char* code = uenum_next(all, nullptr, &error)) {
    if (englishName(code)) codes.emplace_back(code);
  }
  uenum_close(all);
  return codes;
}

class WrittenAmounts : public testing::Test {
 protected:
  // A decimal with `fraction` digits after the point, or up to four.
  std::string amount(int fraction) {
    std::string text = random_() % 4 == 0 ? "-" : "";
    for (auto digits = 1 + random_() % 11; digits > 0; --digits) text += digit();
    if (fraction < 0) fraction = static_cast<int>(random_() % 5);
    if (fraction > 0) text += '.';
    for (; fraction > 0; --fraction) text += digit();
    return text;
  }

  void check(const LocalizedNumberFormatter& formatter, const char* locale, int fraction,
             const std::string& code) {
    const std::string typed = amount(fraction);
    UErrorCode error = U_ZERO_ERROR;
    std::string text;
    formatter.formatDecimal(typed, error).toString(error).toUTF8String(text);
    ASSERT_TRUE(U_SUCCESS(error)) << locale;
    const TypedAmount read = readAmount(text, locale);
    if (kHasNewSigns && !code.empty() && read.kind == Kind::refused) {
      ++refused_;
      return;
    }
    const double right = parseDouble(typed).value_or(0.0);
    exact_ += read.kind == Kind::exact ? 1 : 0;
    ambiguous_ += read.kind == Kind::ambiguous ? 1 : 0;
    const bool oneIsRight = read.value == right || read.other == right;
    if (!oneIsRight || read.kind == Kind::refused) {
      ADD_FAILURE() << text << " in " << locale << " is " << typed << ", read " << read.value << ' '
                    << read.reason << ' ' << read.place;
    }
    if (read.kind != Kind::refused) checkCurrency(read, text, code, locale);
  }

  void checkSentence(const LocalizedNumberFormatter& formatter, const char* locale, int fraction,
                     const std::string& code, const CurrencyManager& catalogue) {
    const std::string typed = amount(fraction);
    UErrorCode error = U_ZERO_ERROR;
    std::string text;
    formatter.formatDecimal(typed, error).toString(error).toUTF8String(text);
    SentenceOptions options;
    options.locale = locale;
    options.catalogue = &catalogue;
    options.offers = false;
    const Sentence read = readSentence(text, options);
    if (read.problem || read.source == nullptr) {
      ++refused_;
      if (std::getenv("FEXORA_AMOUNTS") != nullptr) {
        std::cout << locale << ' ' << code << ' ' << text << '\n';
      }
      return;
    }
    ++exact_;
    const double right = parseDouble(typed).value_or(0.0);
    const TypedAmount& found = read.amount;
    EXPECT_TRUE(found.value == right || found.other == right)
        << text << " in " << locale << " is " << typed << ", read " << found.value;
    const bool isShared = found.currencyBy == By::region || found.currencyBy == By::trade;
    EXPECT_TRUE(found.currency == code || isShared)
        << text << " in " << locale << " is " << code << ", read " << found.currency;
  }

  std::mt19937_64 random_{1};  // NOLINT(cert-msc51-cpp): the same amounts every time
  int exact_ = 0;
  int ambiguous_ = 0;
  int refused_ = 0;

 private:
  char digit() { return static_cast<char>('0' + random_() % 10); }

  static void checkCurrency(const TypedAmount& read, const std::string& text,
                            const std::string& code, const char* locale) {
    const bool isShared = read.currencyBy == By::region || read.currencyBy == By::trade;
    // Where the sign is a character without width, none is seen.
    const bool isUnseen = read.currency.empty() && text.find("\u200B") != text.npos;
    EXPECT_TRUE(read.currency == code || isShared || isUnseen)
        << text << " in " << locale << " is " << code << ", read " << read.currency;
  }
};

// FEXORA_AMOUNTS says how many of each kind in each locale, for the long form.
TEST_F(WrittenAmounts, InEveryLocale_AreReadAsWritten) {
  const char* const given = std::getenv("FEXORA_AMOUNTS");
  const int amounts = given != nullptr ? std::atoi(given) : 100;
  const std::vector<std::string> codes = icuCodes();
  std::int32_t count = 0;
  const icu::Locale* const locales = icu::Locale::getAvailableLocales(count);
  for (std::int32_t i = 0; i < count && !HasFailure(); ++i) {
    const char* const name = locales[i].getName();
    const auto plain =
        NumberFormatter::withLocale(locales[i]).precision(icu::number::Precision::unlimited());
    for (int n = 0; n < amounts; ++n) check(plain, name, -1, "");
    for (int n = 0; n < kCurrencies; ++n) {
      UErrorCode error = U_ZERO_ERROR;
      std::u16string code(4, u'\0');
      // The locale's own at first.
      if (n > 0 || ucurr_forLocale(name, code.data(), 4, &error) != 3) {
        const std::string& other = codes[random_() % codes.size()];
        code.assign(other.begin(), other.end());
      }
      error = U_ZERO_ERROR;
      const icu::CurrencyUnit unit(code.c_str(), error);
      const int digits = ucurr_getDefaultFractionDigits(code.c_str(), &error);
      const auto money = plain.unit(unit)
                             .unitWidth(kWidths[random_() % std::size(kWidths)])
                             .precision(icu::number::Precision::fixedFraction(digits));
      for (int m = 0; m < amounts / kCurrencies; ++m) {
        check(money, name, digits, unit.getSubtype());
      }
    }
  }
  std::cout << count << " locales: " << exact_ << " exact, " << ambiguous_ << " ambiguous, "
            << refused_ << " rejected\n";
  EXPECT_GT(exact_, 10 * ambiguous_);
  EXPECT_GT(exact_, 400 * refused_);
}

// Money with names in every plural form, and negative ones as accounts have them. FEXORA_AMOUNTS
// takes all locales and a hundredth of it in each, otherwise some of them.
TEST_F(WrittenAmounts, AsSentencesOfMoney_AreNeverReadWrong) {
  const char* const given = std::getenv("FEXORA_AMOUNTS");
  const std::size_t step = given != nullptr ? 1 : 40;
  const int sentences = given != nullptr ? std::atoi(given) / 100 : kCurrencies;
  const std::vector<std::string> codes = icuCodes();
  std::int32_t count = 0;
  const icu::Locale* const locales = icu::Locale::getAvailableLocales(count);
  for (std::size_t i = 0; i < static_cast<std::size_t>(count); i += step) {
    const char* const name = locales[i].getName();
    CurrencyNames names(Text::process(), name);
    test::VirtualPlatform desktop;
    desktop.platform.strings = &names;
    const CurrencyManager catalogue(desktop.platform);
    for (int n = 0; n < sentences; ++n) {
      const std::string& code = codes[random_() % codes.size()];
      const auto width =
          n % 2 == 0 ? UNUM_UNIT_WIDTH_FULL_NAME : kWidths[random_() % std::size(kWidths)];
      const bool inAccounts = n % 2 != 0;
      UErrorCode error = U_ZERO_ERROR;
      const icu::CurrencyUnit unit(std::u16string(code.begin(), code.end()).c_str(), error);
      const int digits = ucurr_getDefaultFractionDigits(unit.getISOCurrency(), &error);
      const auto money = NumberFormatter::withLocale(locales[i])
                             .unit(unit)
                             .unitWidth(width)
                             .sign(inAccounts ? UNUM_SIGN_ACCOUNTING : UNUM_SIGN_AUTO)
                             .precision(icu::number::Precision::fixedFraction(digits));
      checkSentence(money, name, digits, code, catalogue);
    }
  }
  std::cout << exact_ << " read, " << refused_ << " rejected\n";
  EXPECT_GT(exact_, 20 * refused_);
}

}  // namespace
}  // namespace fexora
