#include "fexora/platform/foundation/StringsFile.h"

#include <string>

#include <gtest/gtest.h>

#include "fexora/platform/foundation/Limits.h"

#include "tests/support/ScratchFolder.h"

namespace fexora {
namespace {

using namespace std::string_literals;

std::string utf16(const std::u16string& text, bool bigEndian) {
  std::string bytes;
  for (const char16_t unit : u"\uFEFF" + text) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xFF);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  }
  return bytes;
}

TEST(StringsFile, EntriesAndComments_GiveATable) {
  const auto result = parseStringsFile(
      "/* US \"Dollar\"; */\n\"USD\" = \"US Dollar\"; // the pivot\r\n"
      "EUR='Euro';1INCH = one.inch/$:-_ ;\n\"GBP\"/**/=/* a */\"£\";SAME;\"EUR\" = \"€uro\";");
  ASSERT_TRUE(result.table.has_value()) << result.error;
  EXPECT_EQ(*result.table, (StringTable{{"USD", "US Dollar"},
                                        {"EUR", "€uro"},
                                        {"1INCH", "one.inch/$:-_"},
                                        {"GBP", "£"},
                                        {"SAME", "SAME"}}));
  EXPECT_TRUE(parseStringsFile("").table->empty());
  EXPECT_TRUE(parseStringsFile("\xEF\xBB\xBF // nothing").table->empty());
}

TEST(StringsFile, Escapes_StandForTheirSigns) {
  const auto result = parseStringsFile(
      R"(a = "\"\\\'\/\n\t\a\v\q"; b = "\U20AC\u00e9\Ud83D\UDE00"; c = "\101\0601\7x\0";
         d = "two
lines\
three";)");
  ASSERT_TRUE(result.table.has_value()) << result.error;
  EXPECT_EQ(result.table->at("a"), "\"\\'/\n\t\a\vq");
  EXPECT_EQ(result.table->at("b"), "€é😀");
  EXPECT_EQ(result.table->at("c"), "A01\7x\0"s);
  EXPECT_EQ(result.table->at("d"), "two\nlines\nthree");
}

TEST(StringsFile, Utf16WithMark_IsReadInBothOrders) {
  for (const bool bigEndian : {false, true}) {
    const auto result = parseStringsFile(utf16(u"\"JPY\" = \"日本円 😀\";", bigEndian));
    ASSERT_TRUE(result.table.has_value()) << result.error;
    EXPECT_EQ(result.table->at("JPY"), "日本円 😀");
  }
  EXPECT_FALSE(parseStringsFile(utf16(u"a=b;", true) + "x").table);
  EXPECT_FALSE(parseStringsFile(utf16(u"a=\"" + std::u16string(1, 0xD83D) + u"\";", false)).table);
}

TEST(StringsFile, BrokenFiles_AreRefusedWithTheLine) {
  struct Case {
    std::string bytes, error;
  };
  const Case cases[] = {
      {"a = b;\n\nc = d", "line 3: ';' expected"},
      {"a = b;\nc", "line 2: ';' expected"},
      {"a b;", "line 1: ';' expected"},
      {"a = ;", "line 1: a string expected"},
      {"= b;", "line 1: a string expected"},
      {"\n\"a", "line 2: a string without its end"},
      {"\"a\\", "line 1: a string without its end"},
      {"a=b; /* c", "line 1: a comment without its end"},
      {"a=b /* c", "line 1: a comment without its end"},
      {"a=\"\\U20A\";", "line 1: four hex digits expected"},
      {"a=\"\\Ud83D\\U0041\";", "line 1: half of a surrogate pair"},
      {"a=\"\\Ude00\";", "line 1: half of a surrogate pair"},
      {"a=\"\\200\";", "line 1: an octal escape beyond ASCII"},
      {"a=\"\xFF\";", "neither UTF-8 nor UTF-16 with a byte-order mark"},
      {"a=\"\xED\xA0\x80\";", "neither UTF-8 nor UTF-16 with a byte-order mark"},
  };
  for (const auto& [bytes, error] : cases) {
    const auto result = parseStringsFile(bytes);
    EXPECT_FALSE(result.table.has_value()) << bytes;
    EXPECT_EQ(result.error, error) << bytes;
  }
}

TEST(StringsFile, Load_ReplacesTheStringsOrKeepsThem) {
  const test::ScratchFolder folder;
  test::writeFile(folder / "de.strings", "USD = \"US-Dollar\";");
  test::writeFile(folder / "bad.strings", "USD");
  test::writeFile(folder / "large.strings", std::string(limits::kStringsFileBytes + 1, ' '));
  StringsFile strings;
  EXPECT_EQ(strings.string("USD"), std::nullopt);
  EXPECT_EQ(localizedString(strings, "USD"), "USD");
  const auto before = strings.generation();
  std::string error;
  ASSERT_TRUE(strings.load(folder / "de.strings", error)) << error;
  const auto after = strings.generation();
  EXPECT_NE(after, before);
  EXPECT_NE(after, 0U);
  EXPECT_EQ(localizedString(strings, "USD"), "US-Dollar");
  EXPECT_EQ(strings.string("EUR"), std::nullopt);

  for (const char* name : {"bad.strings", "large.strings", "absent.strings", "."}) {
    error.clear();
    EXPECT_FALSE(strings.load(folder / name, error)) << name;
    EXPECT_EQ(error.find(folder / name), 0U) << error;
  }
  EXPECT_EQ(strings.string("USD"), "US-Dollar");
  EXPECT_EQ(strings.generation(), after);
}

}  // namespace
}  // namespace fexora
