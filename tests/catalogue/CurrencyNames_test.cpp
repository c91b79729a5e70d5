#include "fexora/catalogue/CurrencyNames.h"

#include <set>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <unicode/uvernum.h>

#include "fexora/catalogue/EnglishNames.h"
#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/resources/EmbeddedCatalogue.h"

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

TEST(EnglishNames, Table_FollowsTheLanguageData) {
  if (U_ICU_VERSION_MAJOR_NUM != 72) GTEST_SKIP() << "the table follows the names of ICU 72";
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
  EXPECT_EQ(names.string("BTC"), "Bitcoin");
  EXPECT_EQ(names.string("NONE"), std::nullopt);
  for (const auto& [language, yen] :
       {std::pair("de_DE", "Japanischer Yen"), std::pair("ar", "ين ياباني"),
        std::pair("hi_IN", "जापानी येन"), std::pair("tlh", "Japanese Yen")}) {
    names.setLanguage(language);
    EXPECT_EQ(names.string("JPY"), yen) << language;
  }
  const auto before = names.generation();
  EXPECT_EQ(names.generation(), before);
  names.setLanguage("fr");
  EXPECT_NE(names.generation(), before);
  names.setLanguage("tlh");
  EXPECT_NE(names.generation(), before) << "names may have been read in between";
}

TEST(CurrencyNames, NoLanguage_FollowsTheCurrentOne) {
  CurrencyNames names(*fexora_text_module());
  const test::LocaleScope scope("ja_JP");
  const auto japanese = names.generation();
  EXPECT_EQ(names.string("USD"), "米ドル");
  Locale::setCurrent("en_US");
  EXPECT_EQ(names.string("USD"), "US Dollar");
  Locale::setCurrent("ja_JP");
  EXPECT_NE(names.generation(), japanese) << "names may have been read in between";
}

}  // namespace
}  // namespace fexora
