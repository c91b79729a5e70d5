#include "fexora/platform/foundation/GettextStrings.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/foundation/FirstOfStrings.h"

#include "tests/support/ScratchFolder.h"

namespace fexora {
namespace {

using namespace std::string_literals;
using Messages = std::vector<std::pair<std::string, std::string>>;

std::string word(std::uint32_t value, bool bigEndian) {
  std::string bytes(4, '\0');
  for (std::size_t i = 0; i < 4; ++i) {
    bytes[bigEndian ? 3 - i : i] = static_cast<char>(value >> (8 * i) & 0xFFU);
  }
  return bytes;
}

// A catalogue as the gettext manual lays it out, without its optional hash table.
std::string catalogue(const Messages& messages, bool bigEndian = false) {
  const auto count = static_cast<std::uint32_t>(messages.size());
  std::string tables[2];
  std::string texts;
  for (const bool translated : {false, true}) {
    for (const auto& [key, value] : messages) {
      const std::string& text = translated ? value : key;
      const auto start = static_cast<std::uint32_t>(28 + 16 * count + texts.size());
      tables[translated ? 1 : 0] +=
          word(static_cast<std::uint32_t>(text.size()), bigEndian) + word(start, bigEndian);
      texts += text + '\0';
    }
  }
  std::string out;
  for (const std::uint32_t number : {0x950412DEU, 0U, count, 28U, 28 + 8 * count, 0U, 0U}) {
    out += word(number, bigEndian);
  }
  return out + tables[0] + tables[1] + texts;
}

void install(const test::ScratchFolder& folder, const std::string& language,
             const std::string& bytes) {
  std::filesystem::create_directories(folder / (language + "/LC_MESSAGES"));
  test::writeFile(folder / (language + "/LC_MESSAGES/app.mo"), bytes);
}

TEST(GettextStrings, Catalogue_GivesPlainMessages) {
  const Messages messages{{"", "Content-Type: text/plain; charset=UTF-8\n"},
                          {"EUR", "Euro"},
                          {"JPY", "Yen japonés"},
                          {"coin\0coins"s, "moneda\0monedas"s},
                          {"menu\4USD", "never"},
                          {"XXX", ""}};
  for (const bool bigEndian : {false, true}) {
    const auto result = parseGettextCatalogue(catalogue(messages, bigEndian));
    ASSERT_TRUE(result.table.has_value()) << result.error;
    EXPECT_EQ(*result.table,
              (StringTable{{"EUR", "Euro"}, {"JPY", "Yen japonés"}, {"coin", "moneda"}}));
  }
}

TEST(GettextStrings, BrokenCatalogues_AreRefusedWhereverTheyAreCut) {
  const std::string whole = catalogue({{"EUR", "Euro"}, {"USD", "US-Dollar"}});
  for (std::size_t size = 0; size + 1 < whole.size(); ++size) {
    EXPECT_FALSE(parseGettextCatalogue(whole.substr(0, size)).table.has_value()) << size;
  }
  std::string endless = whole;
  endless.replace(8, 4, "\xFF\xFF\xFF\xFF");
  EXPECT_EQ(parseGettextCatalogue(endless).error, "a cut-off catalogue");
  EXPECT_FALSE(parseGettextCatalogue(catalogue({{"", "charset=ISO-8859-1\n"}})).table);
  EXPECT_FALSE(parseGettextCatalogue(catalogue({{"EUR", "\xE9"}})).table);
}

TEST(GettextStrings, ManyNamesForTheSameBytes_AreRefusedBeforeTheyFillMemory) {
  // Each entry's text is all of the file's texts: 6,000 times 60 kB from a file of 160 kB.
  Messages messages;
  for (int i = 0; i < 6000; ++i) messages.emplace_back("K" + std::to_string(i), "text");
  std::string bytes = catalogue(messages);
  const auto texts = static_cast<std::uint32_t>(28 + 16 * messages.size());
  const auto length = static_cast<std::uint32_t>(bytes.size()) - texts;
  std::replace(bytes.begin() + texts, bytes.end(), '\0', ' ');
  const std::string whole = word(length, false) + word(texts, false);
  const std::size_t table = 28 + 8 * messages.size();
  for (std::size_t i = 0; i < messages.size(); ++i) bytes.replace(table + 8 * i, 8, whole);
  EXPECT_EQ(parseGettextCatalogue(bytes).error, "too much text");
}

TEST(GettextStrings, Language_FallsBackToTheOneWithoutRegion) {
  const test::ScratchFolder folder;
  install(folder, "de", catalogue({{"USD", "US-Dollar"}}));
  install(folder, "de_CH", catalogue({{"USD", "US-Dollar (CH)"}}));
  install(folder, "fr", "no catalogue");
  GettextStrings strings(folder.path(), "app");
  std::string error;
  EXPECT_TRUE(strings.setLanguage("de_AT", error)) << error;
  EXPECT_EQ(strings.string("USD"), "US-Dollar");
  const auto german = strings.generation();
  EXPECT_TRUE(strings.setLanguage("de_CH", error));
  EXPECT_EQ(strings.string("USD"), "US-Dollar (CH)");
  EXPECT_NE(strings.generation(), german);

  for (const char* language : {"ja_JP", "C", "", "../de", "."}) {
    EXPECT_TRUE(strings.setLanguage(language, error)) << language;
    EXPECT_EQ(strings.string("USD"), std::nullopt) << language;
    EXPECT_EQ(error, "");
  }
  EXPECT_FALSE(strings.setLanguage("fr", error));
  EXPECT_NE(error.find("app.mo: not a compiled gettext catalogue"), std::string::npos) << error;
}

TEST(GettextStrings, WhatMsgfmtCompiles_IsRead) {
  const test::ScratchFolder folder;
  std::filesystem::create_directories(folder / "ja/LC_MESSAGES");
  test::writeFile(folder / "ja.po",
                  "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n"
                  "msgid \"JPY\"\nmsgstr \"日本円\"\nmsgid \"USD\"\nmsgstr \"米ドル\"\n");
  const std::string command =
      "msgfmt -o '" + (folder / "ja/LC_MESSAGES/app.mo") + "' '" + (folder / "ja.po") + "'";
  ASSERT_EQ(std::system(command.c_str()), 0);
  GettextStrings strings(folder.path(), "app");
  std::string error;
  ASSERT_TRUE(strings.setLanguage("ja_JP", error)) << error;
  EXPECT_EQ(strings.string("JPY"), "日本円");
  EXPECT_EQ(strings.string("USD"), "米ドル");
}

TEST(FirstOfStrings, TheFirstThatKnowsAnswers_AndAnyChangeIsANewGeneration) {
  TableStrings own;
  TableStrings common;
  own.setTable({{"USD", "Buck"}});
  common.setTable({{"USD", "US Dollar"}, {"EUR", "Euro"}});
  FirstOfStrings strings({&own, &common});
  EXPECT_EQ(strings.string("USD"), "Buck");
  EXPECT_EQ(strings.string("EUR"), "Euro");
  EXPECT_EQ(strings.string("GBP"), std::nullopt);
  const auto before = strings.generation();
  EXPECT_EQ(strings.generation(), before);
  common.setTable({});
  EXPECT_NE(strings.generation(), before);
}

}  // namespace
}  // namespace fexora
