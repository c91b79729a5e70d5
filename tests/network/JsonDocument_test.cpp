#include "fexora/platform/network/curl/JsonDocument.h"

#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "fexora/input/Response.h"
#include "fexora/platform/mapping/Mapper.h"
#include "fexora/platform/text/NumberText.h"

#include "tests/support/JsonRoot.h"

namespace fexora::test {
namespace {

using State = JsonDocument::State;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string nested(int depth, const std::string& open, const std::string& close) {
  std::string text = "1";
  for (int i = 0; i < depth; ++i) text.insert(0, open).append(close);
  return text;
}

TEST(JsonDocument, EveryKind) {
  const auto root = jsonRoot(
      "{\"text\": \"\\u00e9\\ud83d\\ude00\\n\", \"list\": [1, [], {}, null],\r\n"
      "\t\"yes\": true, \"no\": false, \"\": \"\", \"text\": 7} ");
  ASSERT_TRUE(root.has_value());
  const Value expected = Dictionary{{"text", "é😀\n"},
                                    {"list", Array{1, Array{}, Dictionary{}, Value()}},
                                    {"yes", 1},
                                    {"no", 0},
                                    {"", ""}};
  EXPECT_EQ(*root, expected);
  EXPECT_EQ(root->dictionary()->find("yes")->number()->kind(), NSNumber::Kind::integer);
  EXPECT_NE(JsonDocument("\xEF\xBB\xBF{\"v\": 3}").object(), nullptr);
  const JsonDocument list(" [{}] ");
  EXPECT_EQ(list.state(), State::value);
  EXPECT_EQ(list.object(), nullptr);
}

TEST(JsonDocument, Numbers_OfEachSize) {
  struct Row {
    std::string text;
    NSNumber expected;
  };
  for (const Row& row :
       std::vector<Row>{{"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
                        {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
                        {"9223372036854775808", 0x1p63},
                        {"18446744073709551616", 0x1p64},
                        {"-18446744073709551616", -0x1p64},
                        {"1" + std::string(30, '0'), 1e30},
                        {"85.23", 85.23},
                        {"5e-324", 5e-324},
                        {"1.7976931348623157e308", 1.7976931348623157e308},
                        {"-0.0", -0.0},
                        {"1e-400", 0.0},
                        {"1034444444444444459008e0", 1034444444444444459008.0},
                        {"0.123456789012345678901234567", 0.123456789012345678901234567},
                        {"1.000000000000000000001", 1.0}}) {
    const auto root = jsonRoot(row.text);
    ASSERT_TRUE(root && root->number() != nullptr) << row.text;
    EXPECT_EQ(root->number()->kind(), row.expected.kind()) << row.text;
    EXPECT_TRUE(root->sameAs(row.expected)) << row.text;
  }
}

TEST(JsonDocument, OneOddNumber_LeavesTheRest) {
  EXPECT_EQ(
      jsonRoot("{\"a\": 123456789012345678901234567890 , \"b\": [1e999\n, \"1e999, \\\"\"],"
               "\"c\": 2}"),
      Value(Dictionary{
          {"a", 123456789012345678901234567890.0}, {"b", Array{"1e999", "1e999, \""}}, {"c", 2}}));
  const JsonDocument document(
      R"({"a": -1e400, "serviceMessage": "m", "rates": [{"code": "EUR", "rate": 1e400},)"
      R"( {"rate": "2", "code": 7, "code": "GBP"}, {}]})");
  ASSERT_NE(document.object(), nullptr);
  const auto answer = Mapper<Response>::map(*document.object());
  EXPECT_EQ(answer->serviceMessage(), "m");
  ASSERT_EQ(answer->rates().size(), 3U);
  EXPECT_EQ(answer->rates()[0]->rate(), NSNumber(kInfinity));
  EXPECT_EQ(answer->rates()[1]->code(), "") << "the first of equal keys counts";
  EXPECT_EQ(answer->rates()[1]->rate(), NSNumber(2.0));
  for (const std::string list : {"[{}, 1]", "{}", "null", "[[]]"}) {
    const JsonDocument other("{\"rates\": " + list + "}");
    EXPECT_TRUE(Mapper<Response>::map(*other.object())->rates().empty()) << list;
  }
}

TEST(JsonDocument, Faults_AreNotJson) {
  for (const std::string_view text : {"",
                                      "  ",
                                      "1,2",
                                      "{}]",
                                      "][",
                                      "],[",
                                      "{} {}",
                                      "1 x",
                                      "[1]]",
                                      "{}}",
                                      "\xEF\xBB\xBF\xEF\xBB\xBF{}",
                                      "\xEF\xBB\xBF",
                                      "nul",
                                      "nullx",
                                      "tru",
                                      "falsey",
                                      "[true false]",
                                      "01",
                                      "-",
                                      "+1",
                                      "1.",
                                      ".5",
                                      "1e",
                                      "1.5e+",
                                      "0x10",
                                      "1.5abc",
                                      "- 1",
                                      "[1,]",
                                      "[,1]",
                                      "[1 2]",
                                      "{\"a\" 1}",
                                      "{\"a\":}",
                                      "{\"a\":1,}",
                                      "{,}",
                                      "{1:2}",
                                      "{1e999:2}",
                                      "{\"a\":1e999, 1e999 :2}",
                                      "[1e999 1e999]",
                                      "[1e999\"x\"]",
                                      "{\"a\":1 \"b\":2}",
                                      "[1}",
                                      "{\"a\":1]",
                                      "[",
                                      "{\"a\":[}",
                                      "'a'",
                                      "NaN",
                                      "[Infinity]",
                                      "\"abc",
                                      "\"\\x\"",
                                      "\"a\nb\"",
                                      "\"\\ud800\"",
                                      "\"\\udc00\"",
                                      "\"\\ud800\\u0041\"",
                                      "{\"\\udfff\":1}",
                                      "\"\xFF\"",
                                      "\"\xC0\x80\"",
                                      "\"\xED\xA0\x80\"",
                                      "<html></html>",
                                      "1e99999999999999999999x",
                                      "12345678901234567890123x",
                                      "01e999",
                                      "[-01e999]",
                                      "\"1e999\\"}) {
    const JsonDocument document(text);
    EXPECT_EQ(document.state(), State::notJson) << text;
    EXPECT_FALSE(document.reason().empty()) << text;
    EXPECT_EQ(document.object(), nullptr) << text;
  }
  EXPECT_EQ(JsonDocument(std::string_view("{}\0", 3)).state(), State::notJson);
}

TEST(JsonDocument, DepthAndCount_AreBounded) {
  EXPECT_EQ(JsonDocument(nested(256, "[", "]")).state(), State::value);
  EXPECT_EQ(JsonDocument(nested(257, "[", "]")).state(), State::notJson);
  EXPECT_EQ(JsonDocument(nested(256, "{\"a\":", "}")).state(), State::value);
  EXPECT_EQ(JsonDocument(nested(257, "{\"a\":", "}")).state(), State::notJson);
  EXPECT_EQ(JsonDocument(std::string(100'000, '[')).state(), State::notJson);
  const std::string_view four = R"([1,{"a":2}])";
  EXPECT_EQ(JsonDocument(four, 4).state(), State::value);
  EXPECT_EQ(JsonDocument(four, 3).state(), State::tooLarge);
}

}  // namespace
}  // namespace fexora::test
