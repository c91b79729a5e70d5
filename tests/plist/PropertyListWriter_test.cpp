#include "fexora/platform/plist/PropertyListWriter.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/PropertyListReader.h"

#include "tests/support/Describe.h"

namespace fexora::test {
namespace {

Value nested(int depth) {
  Value value = Array();
  for (int i = 1; i < depth; ++i) value = Array{value};
  return value;
}

std::string errorOf(const Value& value) {
  const PlistBytes result = writePropertyList(value);
  EXPECT_TRUE(result.bytes.empty());
  EXPECT_EQ(result.error.find('\n'), std::string::npos);
  return result.error;
}

TEST(PropertyListWriter, Layout) {
  const Dictionary dictionary{{"Mode", 1},
                              {"A&B", Array{true, 1.0, "x<\r>y", Array(), Dictionary()}},
                              {"When", Date(-0.5)},
                              {"Bytes", Data{0, 255}},
                              {"In", Dictionary{{"k", "v"}}}};
  EXPECT_EQ(writePropertyList(dictionary).bytes,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
            "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
            "<plist version=\"1.0\">\n"
            "<dict>\n"
            "\t<key>A&amp;B</key>\n"
            "\t<array>\n"
            "\t\t<true/>\n"
            "\t\t<real>1</real>\n"
            "\t\t<string>x&lt;&#13;&gt;y</string>\n"
            "\t\t<array/>\n"
            "\t\t<dict/>\n"
            "\t</array>\n"
            "\t<key>Bytes</key>\n"
            "\t<data>AP8=</data>\n"
            "\t<key>In</key>\n"
            "\t<dict>\n"
            "\t\t<key>k</key>\n"
            "\t\t<string>v</string>\n"
            "\t</dict>\n"
            "\t<key>Mode</key>\n"
            "\t<integer>1</integer>\n"
            "\t<key>When</key>\n"
            "\t<date>1969-12-31T23:59:59Z</date>\n"
            "</dict>\n"
            "</plist>\n");
}

TEST(PropertyListWriter, Unwritable_NamesThePlace) {
  const std::string text = "text with control characters or broken UTF-8";
  EXPECT_EQ(errorOf(Value()), "the root: a null value");
  EXPECT_EQ(errorOf(Dictionary{{"UDUSDRates", Array{1, Dictionary{{"code", "a\x01"}}}}}),
            "UDUSDRates[1].code: " + text);
  EXPECT_EQ(errorOf(Array{Array{Value()}}), "[0][0]: a null value");
  EXPECT_EQ(errorOf(Dictionary{{"a\nb\xFF", 1}}), "a?b?: " + text);
  EXPECT_EQ(errorOf(std::string("a\0b", 3)), "the root: " + text);
  for (const char* broken : {"\x7F\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xEF\xBF\xBF",
                             "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5", "\xE2\x82", "\x0B"}) {
    EXPECT_EQ(errorOf(broken), "the root: " + text);
  }
  for (const double seconds :
       {-62135596801.0, 253402300800.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(errorOf(Dictionary{{"d", Date(seconds)}}), "d: a date outside the years 1 to 9999");
  }
  EXPECT_LT(errorOf(Dictionary{{std::string(100000, 'k'), Value()}}).size(), 300U);
}

TEST(PropertyListWriter, Depth_IsTheReaders) {
  const PlistBytes deepest = writePropertyList(nested(limits::kPropertyListDepth));
  ASSERT_TRUE(deepest.ok()) << deepest.error;
  EXPECT_TRUE(readPropertyList(deepest.bytes).ok());
  EXPECT_TRUE(errorOf(nested(limits::kPropertyListDepth + 1)).ends_with(": nested too deeply"));
}

TEST(PropertyListWriter, Objects_AreTheReaders) {
  Array items(limits::kPropertyListObjects - 1, Value(true));
  EXPECT_TRUE(writePropertyList(items).ok());
  items.emplace_back(true);
  EXPECT_TRUE(errorOf(items).ends_with(": too many objects"));
}

}  // namespace
}  // namespace fexora::test
