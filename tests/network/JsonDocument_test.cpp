// Fixed texts; an odd answer as a whole is read by tests/programs/test_refresh.py, and
// fuzz/answer.cpp holds that damaged ones are counted and mapped alike.
#include "fexora/platform/json/simdjson/JsonDocument.h"

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/Describe.h"
#include "tests/support/JsonRoot.h"
#include "tests/support/Words.h"

namespace fexora::test {
namespace {

using State = JsonDocument::State;

TEST(JsonDocument, EveryKind) {
  // A number beyond all doubles costs only itself.
  EXPECT_EQ(jsonRoot("{\"a\": [1e999\n, \"1e999, \\\"\"], \"b\": 2}"),
            Value(Dictionary{{"a", Array{"1e999", "1e999, \""}}, {"b", 2}}));
  const auto root = jsonRoot(
      "{\"text\": \"\\u00e9\\ud83d\\ude00\\n\", \"list\": [1, [], {}, null],\r\n"
      "\t\"yes\": true, \"no\": false, \"\": \"\", \"text\": 7} ");
  ASSERT_TRUE(root.has_value());
  EXPECT_EQ(describe(*root), describe(Dictionary{{"text", "é😀\n"},
                                                 {"list", Array{1, Array{}, Dictionary{}, Value()}},
                                                 {"yes", 1},
                                                 {"no", 0},
                                                 {"", ""}}));
  EXPECT_NE(JsonDocument("\xEF\xBB\xBF{\"v\": 3}").object(), nullptr);
  const JsonDocument list(" [{}] ");
  EXPECT_EQ(list.state(), State::value);
  EXPECT_EQ(list.object(), nullptr);
}

TEST(JsonDocument, Numbers_OfEachSize) {
  using Row = std::pair<const char*, NSNumber>;
  for (const auto& [text, expected] :
       {Row("-9223372036854775808", std::numeric_limits<std::int64_t>::min()),
        Row("9223372036854775807", std::numeric_limits<std::int64_t>::max()),
        Row("9223372036854775808", 0x1p63), Row("-18446744073709551616", -0x1p64),
        Row("123456789012345678901234567890", 123456789012345678901234567890.0),
        Row("5e-324", 5e-324), Row("1.7976931348623157e308", 1.7976931348623157e308),
        Row("-0.0", -0.0), Row("1e-400", 0.0),
        Row("1034444444444444459008e0", 1034444444444444459008.0),
        Row("0.123456789012345678901234567", 0.123456789012345678901234567)}) {
    const auto root = jsonRoot(text);
    ASSERT_TRUE(root.has_value()) << text;
    EXPECT_EQ(describe(*root), describe(expected)) << text;
  }
}

TEST(JsonDocument, Faults_AreNotJson) {
  std::vector<std::string> faults = {"", "  ", "{} {}", "1 x", "[true false]", "- 1"};
  for (const char* const fault :
       {"[1 2]", "{\"a\" 1}", "{\"a\":1 \"b\":2}", "{\"a\":1e999, 1e999 :2}", "[1e999 1e999]",
        "\"a\nb\"", "\xEF\xBB\xBF\xEF\xBB\xBF{}", "\xEF\xBB\xBF", "\"\xFF\"", "\"\xC0\x80\"",
        "\"\xED\xA0\x80\""}) {
    faults.emplace_back(fault);
  }
  faults.emplace_back("{}\0", 3);
  for (const std::string& fault : words(R"json(
      1,2 {}] ][ ],[ [1]] {}} [ [1} {"a":1] {"a":[} [1,] [,1] {"a":} {"a":1,} {,} {1:2} <html></html>
      {1e999:2} [1e999"x"] nul nullx tru falsey NaN [Infinity] 01 - +1 1. .5 1e 1.5e+ 0x10 1.5abc
      01e999 [-01e999] 1e99999999999999999999x 12345678901234567890123x
      'a' "abc "\x" "\ud800" "\udc00" "\ud800\u0041" {"\udfff":1} "1e999\)json")) {
    faults.push_back(fault);
  }
  for (const std::string& fault : faults) {
    const JsonDocument document(fault);
    EXPECT_EQ(document.state(), State::notJson) << fault;
    EXPECT_FALSE(document.reason().empty()) << fault;
    EXPECT_EQ(document.object(), nullptr) << fault;
  }
}

TEST(JsonDocument, DepthAndCount_AreBounded) {
  const auto nested = [](int depth, const std::string& open, const std::string& close) {
    std::string text = "1";
    for (int i = 0; i < depth; ++i) text.insert(0, open).append(close);
    return JsonDocument(text).state();
  };
  for (const auto& [open, close] : {std::pair("[", "]"), std::pair("{\"a\":", "}")}) {
    EXPECT_EQ(nested(256, open, close), State::value);
    EXPECT_EQ(nested(257, open, close), State::notJson);
  }
  EXPECT_EQ(JsonDocument(std::string(100'000, '[')).state(), State::notJson);
  const std::string_view four = R"([1,{"a":2}])";
  EXPECT_EQ(JsonDocument(four, 4).state(), State::value);
  EXPECT_EQ(JsonDocument(four, 3).state(), State::tooLarge);
}

}  // namespace
}  // namespace fexora::test
