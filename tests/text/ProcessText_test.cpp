// What the process's Text answers by itself, and when it asks for the module.
#include "fexora/platform/text/ProcessText.h"

#include <string>

#include <gtest/gtest.h>

#include "fexora/platform/base/ModuleEntries.h"

namespace fexora {
namespace {

TEST(ProcessText, AsciiAndPlainNumbers_OpenNoModule) {
  int opened = 0;
  ProcessText text([&] {
    ++opened;
    return fexora_text_module();
  });
  EXPECT_EQ(text.lowercased("US Dollar Z[@"), "us dollar z[@");
  EXPECT_EQ(text.canonical("EUR"), "EUR");
  EXPECT_EQ(text.folded("Euro"), "euro");
  EXPECT_EQ(text.characterCount("a\r\n\n\r"), 4U);
  EXPECT_EQ(text.characterEnds("a\r\nb"), (std::vector<std::size_t>{1, 3, 4}));
  EXPECT_TRUE(text.contains("us dollar", "dollar"));
  EXPECT_FALSE(text.contains("us dollar", ""));
  EXPECT_FALSE(text.contains("a\r\nb", "\r"));
  EXPECT_FALSE(text.contains("a\r\nb", "\nb"));
  EXPECT_TRUE(text.contains("a\r\nb\nb", "\nb"));
  EXPECT_TRUE(equalText(text, "\u00E9", "\u00E9"));
  EXPECT_FALSE(equalText(text, "EUR", "USD"));
  EXPECT_EQ(text.decimalSeparator("en_GB"), ".");
  EXPECT_EQ(text.parseNumber("-1,234.5", "en_US", 0), -1234.0);
  EXPECT_EQ(text.formatNumber(1234.5, "C", {}), "1,234.5");
  EXPECT_EQ(opened, 0);

  EXPECT_TRUE(text.contains("K", "\u212A"));
  EXPECT_FALSE(text.contains("k", "\u212A"));
  EXPECT_EQ(text.decimalSeparator("de_DE"), ",");
  EXPECT_EQ(text.parseNumber("٣", "en_US", std::nullopt), 3.0);
  EXPECT_EQ(opened, 1);
}

TEST(ProcessText, ModuleMissing_AsciiRulesGoForEverything) {
  int opened = 0;
  ProcessText text([&]() -> Text* {
    ++opened;
    return nullptr;
  });
  EXPECT_EQ(text.lowercased("ÄB"), "Äb");
  EXPECT_EQ(text.canonical("\u00E9"), "\u00E9");
  EXPECT_EQ(text.folded("Bé"), "bé");
  EXPECT_TRUE(text.regionNames("CH", "en").empty());
  EXPECT_EQ(text.characterCount("é€😀"), 3U);
  EXPECT_TRUE(text.contains("café", "é"));
  EXPECT_FALSE(text.contains("caf\u00E9", "\xA9"));  // the second byte of é
  EXPECT_EQ(text.decimalSeparator("de_DE"), ".");
  EXPECT_EQ(text.parseNumber("1.5", "de_DE", std::nullopt), 1.5);
  EXPECT_EQ(text.formatNumber(1.5, "de_DE", {}), "1.5");
  EXPECT_EQ(text.currencyName("USD", "de_DE"), std::nullopt);
  EXPECT_EQ(opened, 1);
}

}  // namespace
}  // namespace fexora
