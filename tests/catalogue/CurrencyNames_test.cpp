#include "fexora/catalogue/CurrencyNames.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

#include "fexora/catalogue/EnglishNames.h"
#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/text/ProcessText.h"
#include "fexora/resources/EmbeddedCatalogue.h"

#include "tests/support/Command.h"
#include "tests/support/LocaleScope.h"

namespace fexora {
namespace {

TEST(EnglishNames, EveryCatalogueCode_HasOne) {
  // Called by their codes alone.
  const std::set<std::string_view> kOnlyCodes = {"BNB",  "EOS",   "GMX", "OKB", "ORDI",
                                                 "USDD", "WEMIX", "WOO", "XRP"};
  for (const std::string_view code : embeddedCatalogue()) {
    const auto name = englishName(code);
    ASSERT_TRUE(name.has_value()) << code;
    EXPECT_EQ(*name == code, kOnlyCodes.contains(code)) << code;
  }
  for (const char* code :
       {"", "usd", "US", "USDX", "\n", "USD\t", "Euro", "EURO-AND-A-LONG-TAIL"}) {
    EXPECT_EQ(englishName(code), std::nullopt) << code;
  }
}

TEST(EnglishNames, Table_IsMadeFromTheCurrenciesAndFollowsTheLanguageData) {
  test::runPython("tools/make-names", {"--check"});
  // Of these two the data has had better names since.
  const std::set<std::string_view> kCorrected = {"VED", "SLL"};
  for (const std::string_view code : embeddedCatalogue()) {
    const auto common = fexora_text_module()->currencyName(code, "en");
    if (!common || kCorrected.contains(code)) continue;
    EXPECT_EQ(englishName(code), *common);
  }
}

TEST(CurrencyNames, EachLanguage_ItsOwnElseEnglishElseNone) {
  CurrencyNames names(*fexora_text_module(), "de_DE");
  EXPECT_EQ(names.string("JPY"), "Japanischer Yen");
  EXPECT_EQ(names.string("BTC"), "Bitcoin");
  EXPECT_EQ(names.string("NONE"), std::nullopt);
  const auto german = names.generation();
  EXPECT_EQ(names.generation(), german);
  names.setLanguage("ja");
  EXPECT_NE(names.generation(), german);
  EXPECT_EQ(names.string("JPY"), "日本円");
  const auto japanese = names.generation();
  names.setLanguage("fr");
  names.setLanguage("ja");
  EXPECT_NE(names.generation(), japanese) << "names may have been read in between";
  names.setLanguage("ar");
  EXPECT_EQ(names.string("JPY"), "ين ياباني");
  names.setLanguage("hi_IN");
  EXPECT_EQ(names.string("JPY"), "जापानी येन");
  names.setLanguage("tlh");
  EXPECT_EQ(names.string("JPY"), "Japanese Yen");
}

TEST(CurrencyNames, NoLanguage_FollowsTheCurrentOne) {
  CurrencyNames names(*fexora_text_module());
  const test::LocaleScope scope("ja_JP");
  const auto japanese = names.generation();
  EXPECT_EQ(names.string("USD"), "米ドル");
  Locale::setCurrent("en_US");
  Locale::setCurrent("ja_JP");
  EXPECT_NE(names.generation(), japanese) << "names may have been read in between";
  Locale::setCurrent("en_US");
  EXPECT_EQ(names.string("USD"), "US Dollar");
}

TEST(CurrencyNames, English_OpensNoModule) {
  int opened = 0;
  ProcessText text([&] {
    ++opened;
    return fexora_text_module();
  });
  for (const char* language : {"en", "en_GB", "C"}) {
    CurrencyNames names(text, language);
    EXPECT_EQ(names.string("EUR"), "Euro");
    EXPECT_EQ(names.string("1INCH"), "1inch");
  }
  EXPECT_EQ(opened, 0);
}

}  // namespace
}  // namespace fexora
