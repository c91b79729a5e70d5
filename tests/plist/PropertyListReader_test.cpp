#include "fexora/platform/plist/PropertyListReader.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "fexora/platform/base/Limits.h"

#include "tests/support/Describe.h"

namespace fexora::test {
namespace {

std::string plist(const std::string& root) {
  return "<plist version=\"1.0\">" + root + "</plist>";
}

Value readRoot(const std::string& root) {
  const PlistResult result = readPropertyList(plist(root));
  EXPECT_TRUE(result.ok()) << root << ": " << result.error;
  return result.value;
}

std::string repeated(const std::string& text, int count) {
  std::string out;
  for (int i = 0; i < count; ++i) out += text;
  return out;
}

void expectRefused(const std::string& bytes) {
  const PlistResult result = readPropertyList(bytes);
  EXPECT_FALSE(result.ok()) << bytes.substr(0, 200);
  EXPECT_TRUE(result.value.isNull());
  EXPECT_EQ(result.error.find('\n'), std::string::npos);
}

TEST(PropertyListReader, Integers) {
  EXPECT_EQ(describe(readRoot("<integer>-9223372036854775808</integer>")), "i-9223372036854775808");
  EXPECT_EQ(describe(readRoot("<integer> +7\n</integer>")), "i7");
  EXPECT_EQ(describe(readRoot("<integer>0xFf</integer>")), "i255");
  // 2^63 and 2^64 - 1, the nearest doubles.
  EXPECT_EQ(describe(readRoot("<integer>9223372036854775808</integer>")),
            describe(9223372036854775808.0));
  EXPECT_EQ(describe(readRoot("<integer>18446744073709551615</integer>")),
            describe(18446744073709551616.0));
  for (const char* text : {"", "1.0", "0x", "0x+1", "++1", "1 2", "-9223372036854775809",
                           "18446744073709551616", "1,000", "\xD9\xA1"}) {
    expectRefused(plist("<integer>" + std::string(text) + "</integer>"));
  }
}

TEST(PropertyListReader, RealsBooleansDatesAndData) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(describe(readRoot("<real>-0.0</real>")), describe(-0.0));
  EXPECT_EQ(describe(readRoot("<real> +infinity </real>")), describe(kInfinity));
  EXPECT_EQ(describe(readRoot("<real>nan</real>")), "rnan");
  EXPECT_EQ(describe(readRoot("<real>1e400</real>")), describe(kInfinity));
  EXPECT_EQ(describe(readRoot("<array><true/><false></false></array>")), "a[b1,b0,]");
  EXPECT_EQ(describe(readRoot("<date> 2026-09-29T00:00:00Z</date>")), describe(Date(1790640000.0)));
  EXPECT_EQ(describe(readRoot("<data> /w\n\tA=\n</data>")), "xff00");
  EXPECT_EQ(describe(readRoot("<data/>")), "x");
  for (const char* root :
       {"<real>85,23</real>", "<real/>", "<real>1 0</real>", "<true>x</true>",
        "<date>2026-02-29T00:00:00Z</date>", "<date>2026-09-29</date>", "<data>A</data>",
        "<data>AA</data>", "<data>AAA</data>", "<data>AA=A</data>", "<data>A-==</data>"}) {
    expectRefused(plist(root));
  }
}

TEST(PropertyListReader, Text_KeepsWhatItsEncodingAndEscapesSay) {
  EXPECT_EQ(
      *readRoot("<string> &lt;a&#13;&#x20AC;<!-- no --><![CDATA[<b>&amp;]]> </string>").string(),
      " <a\r\xE2\x82\xAC<b>&amp; ");
  EXPECT_EQ(*readRoot("<string/>").string(), "");
  const std::string latin = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>";
  EXPECT_EQ(*readPropertyList(latin + plist("<string>\xE9</string>")).value.string(), "\xC3\xA9");
  EXPECT_EQ(*readPropertyList("\xEF\xBB\xBF" + plist("<string>a</string>")).value.string(), "a");
  std::string wide = "\xFF\xFE";
  for (const char c : plist("<string>a</string>")) wide += {c, '\0'};
  EXPECT_EQ(*readPropertyList(wide).value.string(), "a");
  for (const char* text : {"\xE9", "\xED\xA0\x80", "\xC0\x80", "\xEF\xBF\xBE", "\x01", "&#1;",
                           "]]>", "&nbsp;", "\xF4\x90\x80\x80"}) {
    expectRefused(plist("<string>" + std::string(text) + "</string>"));
  }
  expectRefused(plist("<string>" + std::string(1, '\0') + "</string>"));
}

TEST(PropertyListReader, DuplicateKeys_FirstWins) {
  EXPECT_EQ(describe(readRoot("<dict><key>b</key><integer>1</integer><key>a</key><true/>"
                              "<key>b</key><integer>2</integer></dict>")),
            "d{61:b1,62:i1,}");
}

TEST(PropertyListReader, MisplacedElements_AreRefused) {
  for (const char* root :
       {"", "<true/><true/>", "<dict><true/></dict>", "<dict><key>a</key></dict>",
        "<dict><key>a</key><key>b</key><true/></dict>", "<array><key>a</key></array>",
        "<key>a</key>", "<array>text</array>", "<dict>1<key>a</key><true/></dict>",
        "<string><string/></string>", "<set/>", "<array><plist/></array>", "<null/>",
        "<dict><key>a</key><true/>"}) {
    expectRefused(plist(root));
  }
  for (const char* file :
       {"", " ", "<true/>", "<dict/>", "<plist/>", "hello", "<plist><true/>",
        "<plist><true/></plist>x", "<plist><true/></plist><plist/>", "bplist", "bplist01"}) {
    expectRefused(file);
  }
  expectRefused(plist("<true/>") + std::string(1, '\0'));
}

TEST(PropertyListReader, Declarations_AreRefused) {
  const std::string body = plist("<string>&a;</string>");
  // A billion of the innermost text, were it expanded.
  std::string bomb = "<!DOCTYPE plist [<!ENTITY a0 \"ha\">";
  for (int i = 1; i < 30; ++i) {
    const std::string inner = "&a" + std::to_string(i - 1) + ";";
    bomb.append("<!ENTITY a").append(std::to_string(i)).append(" \"");
    bomb.append(inner).append(inner).append("\">");
  }
  expectRefused(bomb + "]>" + plist("<string>&a29;</string>"));
  expectRefused("<!DOCTYPE plist [<!ENTITY a SYSTEM \"file:///etc/hostname\">]>" + body);
  expectRefused("<!DOCTYPE plist [<!ENTITY % a SYSTEM \"a.dtd\"> %a;]>" + plist("<true/>"));
  expectRefused("<!DOCTYPE plist [<!ELEMENT plist ANY>]>" + plist("<true/>"));
  expectRefused("<!DOCTYPE html>" + plist("<true/>"));
  // With an outer document type an unknown entity is no error of XML's.
  expectRefused("<!DOCTYPE plist SYSTEM \"a.dtd\">" + body);
}

TEST(PropertyListReader, Depth_IsBounded) {
  const auto nested = [](int depth) {
    return plist(repeated("<array>", depth) + repeated("</array>", depth));
  };
  EXPECT_TRUE(readPropertyList(nested(limits::kPropertyListDepth)).ok());
  expectRefused(nested(limits::kPropertyListDepth + 1));
  expectRefused(repeated("<array>", 200000));
}

TEST(PropertyListReader, Objects_AreBounded) {
  const auto count = static_cast<int>(limits::kPropertyListObjects);
  const std::string most = plist("<array>" + repeated("<true/>", count - 1) + "</array>");
  EXPECT_TRUE(readPropertyList(most).ok());
  expectRefused(plist("<array>" + repeated("<true/>", count) + "</array>"));
}

TEST(PropertyListReader, Error_NamesTheLine) {
  EXPECT_EQ(readPropertyList("<plist>\n<array>\n<nil/>\n</array></plist>").error,
            "line 3: unknown element <nil>");
}

TEST(PropertyListReader, HugeToken_IsReadOnce) {
  // One comment and one text far beyond a piece of what the parser is fed.
  const std::string text(3'000'000, 'x');
  const std::string root = "<!--" + text + "--><string>" + text + "</string>";
  EXPECT_EQ(readRoot(root).string()->size(), text.size());
}

}  // namespace
}  // namespace fexora::test
