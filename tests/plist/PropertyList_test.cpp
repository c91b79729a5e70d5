// The readers of XML files and the writer, whose bounds are the same. That the fast way reads what
// the parser reads is held by fuzz/store.cpp; here is which files take it.
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/LaidOutPlistReader.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"
#include "fexora/platform/plist/XmlPlistWriter.h"

#include "tests/support/Describe.h"
#include "tests/support/Words.h"

namespace fexora::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string plist(const std::string& root) {
  return "<plist version=\"1.0\">" + root + "</plist>";
}

std::string repeated(const std::string& text, int count) {
  std::string out;
  for (int i = 0; i < count; ++i) out += text;
  return out;
}

void expectRead(const std::string& file, const Value& expected) {
  const PlistResult result = readPropertyList(file);
  EXPECT_EQ(result.error, "") << file.substr(0, 200);
  EXPECT_TRUE(sameDescription(describe(result.value), describe(expected))) << file.substr(0, 200);
}

void expectRejected(const std::string& file) {
  const PlistResult result = readPropertyList(file);
  EXPECT_FALSE(result.ok()) << file.substr(0, 200);
  EXPECT_TRUE(result.value.isNull());
  EXPECT_EQ(result.error.find('\n'), std::string::npos);
}

std::string writeError(const Value& value) {
  const PlistBytes result = writePropertyList(value);
  EXPECT_TRUE(result.bytes.empty());
  EXPECT_EQ(result.error.find('\n'), std::string::npos);
  return result.error;
}

TEST(PropertyListReader, Leaves) {
  for (const auto& [root, expected] : std::vector<std::pair<std::string, Value>>{
           {"<integer>-9223372036854775808</integer>", std::numeric_limits<std::int64_t>::min()},
           {"<integer> +7\n</integer>", 7},
           {"<integer>0xFf</integer>", 255},
           {"<integer>9223372036854775808</integer>", 0x1p63},
           {"<integer>18446744073709551615</integer>", 0x1p64},
           {"<real>-0.0</real>", -0.0},
           {"<real> +infinity </real>", kInfinity},
           {"<real>nan</real>", std::numeric_limits<double>::quiet_NaN()},
           {"<real>1e400</real>", kInfinity},
           {"<array><true/><false></false></array>", Array{true, false}},
           {"<date> 2026-09-29T00:00:00Z</date>", Date(1790640000.0)},
           {"<data> /w\n\tA=\n</data>", Data{0xFF, 0}},
           {"<data/>", Data{}},
           {"<string/>", ""},
           {"<string> &lt;a&#13;&#x20AC;<!-- no --><![CDATA[<b>&amp;]]> </string>",
            " <a\r\xE2\x82\xAC<b>&amp; "},
           {"<dict><key>b</key><integer>1</integer><key>a</key><true/><key>b</key>"
            "<integer>2</integer></dict>",
            Dictionary{{"a", true}, {"b", 1}}}}) {
    expectRead(plist(root), expected);
  }
  expectRead("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + plist("<string>\xE9</string>"),
             "\xC3\xA9");
  expectRead("\xEF\xBB\xBF" + plist("<string>a</string>"), "a");
  std::string wide = "\xFF\xFE";
  for (const char c : plist("<string>a</string>")) wide += {c, '\0'};
  expectRead(wide, "a");
}

TEST(PropertyListReader, WhatIsNoPropertyList_IsRejected) {
  for (const std::string text : {"", "1.0", "0x", "0x+1", "++1", "1 2", "-9223372036854775809",
                                 "18446744073709551616", "1,000", "\xD9\xA1"}) {
    expectRejected(plist("<integer>" + text + "</integer>"));
  }
  for (const std::string text : {"\xE9", "\xED\xA0\x80", "\xC0\x80", "\xEF\xBF\xBE", "\x01", "&#1;",
                                 "]]>", "&nbsp;", "\xF4\x90\x80\x80"}) {
    expectRejected(plist("<string>" + text + "</string>"));
  }
  for (const std::string& root : words(R"(
           <real>85,23</real> <real/> <true>x</true> <true/><true/> <null/> <set/> <key>a</key>
           <date>2026-02-29T00:00:00Z</date> <date>2026-09-29</date>
           <data>A</data> <data>AA</data> <data>AAA</data> <data>AA=A</data> <data>A-==</data>
           <dict><true/></dict> <dict><key>a</key></dict> <dict><key>a</key><true/>
           <dict><key>a</key><key>b</key><true/></dict> <dict>1<key>a</key><true/></dict>
           <array><key>a</key></array> <array>text</array> <array><plist/></array>
           <string><string/></string>)")) {
    expectRejected(plist(root));
  }
  expectRejected(plist("<real>1 0</real>"));
  for (const std::string& file : words(
           "hello <true/> <dict/> <plist/> <plist><true/> <plist></plist> <plist><true/></plist>x "
           "<plist><true/></plist><plist/> bplist bplist01")) {
    expectRejected(file);
  }
  for (const std::string& file : {std::string(), std::string(" "), plist("<true/>") + '\0',
                                  plist(std::string("<string>\0</string>", 18))}) {
    expectRejected(file);
  }
  EXPECT_EQ(readPropertyList("<plist>\n<array>\n<nil/>\n</array></plist>").error,
            "line 3: unknown element <nil>");
}

TEST(PropertyListReader, Declarations_AreRejected) {
  const std::string body = plist("<string>&a;</string>");
  // A billion of the innermost text, were it expanded.
  std::string bomb = "<!DOCTYPE plist [<!ENTITY a0 \"ha\">";
  for (int i = 1; i < 30; ++i) {
    const std::string inner = "&a" + std::to_string(i - 1) + ";";
    bomb.append("<!ENTITY a").append(std::to_string(i)).append(" \"");
    bomb.append(inner).append(inner).append("\">");
  }
  expectRejected(bomb + "]>" + plist("<string>&a29;</string>"));
  expectRejected("<!DOCTYPE plist [<!ENTITY a SYSTEM \"file:///etc/hostname\">]>" + body);
  expectRejected("<!DOCTYPE plist [<!ENTITY % a SYSTEM \"a.dtd\"> %a;]>" + plist("<true/>"));
  expectRejected("<!DOCTYPE plist [<!ELEMENT plist ANY>]>" + plist("<true/>"));
  expectRejected("<!DOCTYPE html>" + plist("<true/>"));
  // With an outer document type an unknown entity is no error of XML's.
  expectRejected("<!DOCTYPE plist SYSTEM \"a.dtd\">" + body);
}

TEST(PropertyListReader, HugeToken_IsReadOnce) {
  // One comment and one text far beyond a piece of what the parser is fed.
  const std::string text(3'000'000, 'x');
  expectRead(plist("<!--" + text + "--><string>" + text + "</string>"), text);
}

TEST(PropertyLists, DepthAndObjects_HaveOneBoundForReadingAndWriting) {
  const auto nested = [](int depth) {
    return plist(repeated("<array>", depth) + repeated("</array>", depth));
  };
  const auto objects = [](int count) {
    return plist("<array>" + repeated("<true/>", count) + "</array>");
  };
  constexpr int kDepth = limits::kPropertyListDepth;
  constexpr auto kObjects = static_cast<int>(limits::kPropertyListObjects);
  for (const std::string& most : {nested(kDepth), objects(kObjects - 1)}) {
    const PlistResult read = readPropertyList(most);
    ASSERT_TRUE(read.ok()) << read.error;
    const PlistBytes written = writePropertyList(read.value);
    EXPECT_TRUE(written.ok()) << written.error;
    EXPECT_TRUE(readPropertyList(written.bytes).ok());
    EXPECT_FALSE(writePropertyList(Array{read.value}).ok());
  }
  expectRejected(nested(kDepth + 1));
  expectRejected(nested(100'000));
  expectRejected(objects(kObjects));
}

std::string laidOut(const std::string& root) {
  return std::string(kXmlPlistHead) + root + "\n" + std::string(kXmlPlistTail);
}

bool isLaidOut(const std::string& bytes) {
  Value value;
  return LaidOutPlistReader(bytes).readFile(value);
}

TEST(PropertyListWriter, Layout) {
  EXPECT_EQ(kXmlPlistHead,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
            "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
            "<plist version=\"1.0\">\n");
  EXPECT_EQ(kXmlPlistTail, "</plist>\n");
  const Dictionary nested{{"Mode", 1},
                          {"All", Array{true, false, Array(), Dictionary(), ""}},
                          {"In", Dictionary{{"€", -0.0}}},
                          {"When", Date(-0.5)}};
  const std::string in =
      "<dict>\n\t<key>All</key>\n\t<array>\n\t\t<true/>\n\t\t<false/>\n\t\t<array/>\n\t\t<dict/>\n"
      "\t\t<string></string>\n\t</array>\n\t<key>In</key>\n\t<dict>\n\t\t<key>€</"
      "key>\n\t\t<real>-0</real>\n\t</dict>\n"
      "\t<key>Mode</key>\n\t<integer>1</integer>\n\t<key>When</key>\n\t<date>1969-12-31T23:59:59Z</"
      "date>\n</dict>";
  for (const auto& [value, root] : std::vector<std::pair<Value, std::string>>{
           {nested, in},
           {1.0, "<real>1</real>"},
           {Data{0, 255}, "<data>AP8=</data>"},
           {"x<\r>&y", "<string>x&lt;&#13;&gt;&amp;y</string>"},
           {Dictionary{{"A&B", 1}},
            "<dict>\n\t<key>A&amp;B</key>\n\t<integer>1</integer>\n</dict>"}}) {
    EXPECT_EQ(writePropertyList(value).bytes, laidOut(root));
  }
  // What is written is read the fast way: the root, its four values, and six within.
  Value value;
  const std::string bytes = laidOut(in);
  LaidOutPlistReader reader(bytes);
  EXPECT_TRUE(reader.readFile(value));
  EXPECT_EQ(writePropertyList(value).bytes, bytes);
  EXPECT_EQ(reader.objects(), 11U);
}

TEST(PropertyListWriter, Unwritable_NamesThePlace) {
  const std::string text = "text with control characters or broken UTF-8";
  const std::string date = "a date outside the years 1 to 9999";
  const std::pair<Value, std::string> rows[] = {
      {Value(), "the root: a null value"},
      {Dictionary{{"UDUSDRates", Array{1, Dictionary{{"code", "a\x01"}}}}},
       "UDUSDRates[1].code: " + text},
      {Array{Array{Value()}}, "[0][0]: a null value"},
      {Dictionary{{"a\nb\xFF", 1}}, "a?b?: " + text},
      {std::string("a\0b", 3), "the root: " + text},
      {Dictionary{{"d", Date(-62135596801.0)}}, "d: " + date},
      {Date(253402300800.0), "the root: " + date},
      {Date(std::numeric_limits<double>::quiet_NaN()), "the root: " + date}};
  for (const auto& [value, error] : rows) EXPECT_EQ(writeError(value), error);
  for (const char* broken : {"\x7F\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xEF\xBF\xBF",
                             "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5", "\xE2\x82", "\x0B"}) {
    EXPECT_EQ(writeError(broken), "the root: " + text);
  }
  EXPECT_LT(writeError(Dictionary{{std::string(100000, 'k'), Value()}}).size(), 300U);
}

TEST(LaidOutPlist, OtherLayouts_AreLeftToTheParser) {
  for (const char* root :
       {"<string>&amp;</string>", "<string>></string>", "<string>\r</string>", "\t<true/>",
        "<true></true>", "<integer> 1</integer>", "<integer>0x1</integer>", "<real>1 </real>",
        "<data>AA==</data>", "<array></array>", "<dict>\n\t<key>a</key> \n\t<true/>\n</dict>",
        "<dict>\n\t<key>a</key>\n\t\t<true/>\n</dict>", "<array>\n\t<true/>\n\t</array>",
        "<string><![CDATA[x]]></string>", "<true/>\n<true/>", "<nil/>", "<", ""}) {
    EXPECT_FALSE(isLaidOut(laidOut(root))) << root;
  }
  const std::string whole = laidOut("<true/>");
  EXPECT_TRUE(isLaidOut(whole));
  EXPECT_FALSE(isLaidOut(whole + "\n"));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(isLaidOut(whole.substr(0, size)));
  }
}

TEST(LaidOutPlist, Depth_IsTheParsers) {
  const auto nested = [](int depth) {
    std::string tabs;
    std::string begins;
    std::string ends;
    for (int i = 1; i < depth; ++i, tabs += '\t') {
      begins.append(tabs).append("<array>\n");
      ends.insert(0, "\n" + tabs + "</array>");
    }
    return laidOut(begins + tabs + "<array/>" + ends);
  };
  EXPECT_TRUE(isLaidOut(nested(limits::kPropertyListDepth)));
  EXPECT_FALSE(isLaidOut(nested(limits::kPropertyListDepth + 1)));
}

}  // namespace
}  // namespace fexora::test
