// Which files take the fast way. That it reads what the parser reads is held by fuzz/store.cpp.
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/LaidOutPlistReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"
#include "fexora/platform/plist/XmlPlistWriter.h"

#include "tests/support/Describe.h"

namespace fexora::test {
namespace {

bool isLaidOut(const std::string& bytes) {
  Value value;
  return LaidOutPlistReader(bytes).readFile(value);
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

TEST(LaidOutPlist, OtherLayouts_AreLeftToTheParser) {
  for (const char* root :
       {"<string>&amp;</string>", "<string>></string>", "<string>\r</string>", "\t<true/>",
        "<true></true>", "<integer> 1</integer>", "<integer>0x1</integer>", "<real>1 </real>",
        "<data>AA==</data>", "<array></array>", "<dict>\n\t<key>a</key> \n\t<true/>\n</dict>",
        "<dict>\n\t<key>a</key>\n\t\t<true/>\n</dict>", "<array>\n\t<true/>\n\t</array>",
        "<string><![CDATA[x]]></string>", "<true/>\n<true/>", "<nil/>", "<", ""}) {
    EXPECT_FALSE(isLaidOut(file(root))) << root;
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
}

}  // namespace
}  // namespace fexora::test
