// The fast way of files that the writer made, against the parser that reads all others: a comment
// after the file's head means nothing in XML and makes the file one of those.
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/LaidOutPlistReader.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"
#include "fexora/platform/plist/XmlPlistWriter.h"

#include "tests/support/Describe.h"
#include "tests/support/RandomValues.h"

namespace fexora::test {
namespace {

bool isLaidOut(const std::string& bytes) {
  Value value;
  return LaidOutPlistReader(bytes).readFile(value);
}

void expectReadAsXml(const std::string& bytes) {
  if (!bytes.starts_with(kXmlPlistHead)) return;
  std::string other = bytes;
  other.insert(kXmlPlistHead.size(), "<!---->");
  ASSERT_FALSE(isLaidOut(other));
  const PlistResult fast = readPropertyList(bytes);
  const PlistResult whole = readPropertyList(other);
  EXPECT_EQ(fast.error, whole.error) << bytes.substr(kXmlPlistHead.size(), 500);
  EXPECT_TRUE(sameDescription(describe(fast.value), describe(whole.value)));
}

std::string file(std::string_view root) {
  return std::string(kXmlPlistHead) + std::string(root) + "\n" + std::string(kXmlPlistTail);
}

TEST(LaidOutPlist, WhatTheWriterWrites_IsReadTheFastWay) {
  const Dictionary dictionary{
      {"Fraction", 2},
      {"On", true},
      {"Off", false},
      {"Empty", Array{Array(), Dictionary(), ""}},
      {"UDUSDRates", Array{Dictionary{{"code", "EUR"}, {"rate", 0.85}},
                           Dictionary{{"code", "\xE2\x82\xAC"}, {"rate", -0.0}}}},
      {"UDUSDRatesUpdated", Date(1790640000)}};
  const std::string bytes = writePropertyList(dictionary).bytes;
  Value value;
  LaidOutPlistReader reader(bytes);
  EXPECT_TRUE(reader.readFile(value));
  EXPECT_EQ(describe(value), describe(dictionary));
  // The root, its six values, and three, two and four within.
  EXPECT_EQ(reader.objects(), 16U);
}

TEST(LaidOutPlist, RandomAndDamagedFiles_AgreeWithTheParser) {
  using namespace std::string_view_literals;
  constexpr std::string_view kBytes = "<>/&\n\t\r k]!-x0.\x80\xC3\xEF\xBF\xBE\xED\xF4\0\x01\x7F"sv;
  for (std::uint64_t seed = 0; seed < 40; ++seed) {
    RandomValues random(seed);
    const std::string whole = writePropertyList(random.dictionary(12, 3)).bytes;
    expectReadAsXml(whole);
    for (int round = 0; round < 150; ++round) {
      std::string damaged = whole;
      const std::size_t at =
          kXmlPlistHead.size() + random.number(damaged.size() - kXmlPlistHead.size());
      switch (random.number(3)) {
        case 0:
          damaged[at] = kBytes[random.number(kBytes.size())];
          break;
        case 1:
          damaged.erase(at, random.number(8));
          break;
        default:
          damaged.insert(at, 1, kBytes[random.number(kBytes.size())]);
      }
      expectReadAsXml(damaged);
    }
  }
}

TEST(LaidOutPlist, EveryCharacterOfText_AgreesWithTheParser) {
  // All two-byte endings of a text, and the edges of the longer forms.
  for (unsigned first = 0; first < 256; ++first) {
    for (const unsigned second :
         {0x20U, 0x3EU, 0x80U, 0x8FU, 0x90U, 0x9FU, 0xA0U, 0xBEU, 0xBFU, 0xC0U}) {
      for (const std::string_view tail : {"", "\x80", "\xBF", "\xBE\x80", "\xBF\xBF"}) {
        std::string text = {static_cast<char>(first), static_cast<char>(second)};
        text += tail;
        expectReadAsXml(file("<string>" + text + "</string>"));
      }
    }
  }
}

TEST(LaidOutPlist, OtherLayouts_AreLeftToTheParser) {
  for (const char* root :
       {"<string>&amp;</string>", "<string>></string>", "<string>\r</string>", "\t<true/>",
        "<true></true>", "<integer> 1</integer>", "<integer>0x1</integer>", "<real>1 </real>",
        "<data>AA==</data>", "<array></array>", "<dict>\n\t<key>a</key> \n\t<true/>\n</dict>",
        "<dict>\n\t<key>a</key>\n\t\t<true/>\n</dict>", "<array>\n\t<true/>\n\t</array>",
        "<string><![CDATA[x]]></string>", "<true/>\n<true/>", "<nil/>", "<", ""}) {
    EXPECT_FALSE(isLaidOut(file(root))) << root;
    expectReadAsXml(file(root));
  }
  const std::string whole = file("<true/>");
  EXPECT_TRUE(isLaidOut(whole));
  EXPECT_FALSE(isLaidOut(whole + "\n"));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(isLaidOut(whole.substr(0, size)));
  }
}

TEST(LaidOutPlist, Depth_IsTheParsers) {
  const auto nested = [](int depth) {
    Value value = Array();
    for (int i = 1; i < depth; ++i) value = Array{value};
    return value;
  };
  const std::string deepest = writePropertyList(nested(limits::kPropertyListDepth)).bytes;
  EXPECT_TRUE(isLaidOut(deepest));
  // One array more around all, laid out like the rest.
  std::string deeper = std::string(kXmlPlistHead) + "<array>\n";
  for (std::size_t at = kXmlPlistHead.size(); at < deepest.size() - kXmlPlistTail.size();) {
    const std::size_t end = deepest.find('\n', at) + 1;
    deeper += '\t' + deepest.substr(at, end - at);
    at = end;
  }
  deeper += "</array>\n" + std::string(kXmlPlistTail);
  EXPECT_FALSE(isLaidOut(deeper));
  expectReadAsXml(deeper);
}

}  // namespace
}  // namespace fexora::test
