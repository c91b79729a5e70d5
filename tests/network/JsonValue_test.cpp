#include "fexora/platform/modules/net/JsonValue.h"

#include <cmath>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "fexora/platform/foundation/NumberText.h"

namespace fexora {
namespace {

using State = JsonResult::State;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string nested(std::size_t depth, const std::string& open, const std::string& close) {
  std::string text;
  for (std::size_t i = 0; i < depth; ++i) text += open;
  text += "1";
  for (std::size_t i = 0; i < depth; ++i) text += close;
  return text;
}

// The number, which is checked to be of the kind.
double numberOf(const std::string& text, NSNumber::Kind kind) {
  const JsonResult result = decodeJson(text);
  EXPECT_EQ(result.state, State::value) << text << ": " << result.reason;
  const NSNumber* number = result.root.number();
  EXPECT_NE(number, nullptr) << text;
  if (number == nullptr) return 0;
  EXPECT_EQ(number->kind(), kind) << text;
  return number->doubleValue();
}

TEST(JsonValue, EveryKind) {
  const JsonResult result = decodeJson(
      "\xEF\xBB\xBF {\"text\": \"\\u00e9\\ud83d\\ude00\\n\", \"list\": [1, [], {}, null],\r\n"
      "\t\"yes\": true, \"no\": false, \"\": \"\"} ");
  ASSERT_EQ(result.state, State::value) << result.reason;
  const Value expected = Dictionary{{"text", "é😀\n"},
                                    {"list", Array{1, Array{}, Dictionary{}, Value()}},
                                    {"yes", 1},
                                    {"no", 0},
                                    {"", ""}};
  EXPECT_EQ(result.root, expected);
  EXPECT_EQ(result.root.dictionary()->find("yes")->number()->kind(), NSNumber::Kind::integer);
}

TEST(JsonValue, Root_MayBeAnyValueButOnlyOne) {
  EXPECT_EQ(decodeJson("null").state, State::value);
  EXPECT_EQ(decodeJson(" \"a\" ").root, Value("a"));
  EXPECT_EQ(decodeJson("[]").root, Value(Array{}));
  for (const char* text : {"", "  ", "1,2", "{}]", "][", "],[", "{} {}", "1 x", "[1]]", "{}}",
                           "\xEF\xBB\xBF\xEF\xBB\xBF{}", "\xEF\xBB\xBF"}) {
    EXPECT_EQ(decodeJson(text).state, State::notJson) << text;
  }
}

// Digits, of which the first is 0 only when it stands alone.
std::string randomWhole(std::mt19937& random, std::size_t most) {
  std::string digits(1 + random() % most, '0');
  for (char& c : digits) c = static_cast<char>('0' + random() % 10);
  return digits[0] == '0' ? "0" : digits;
}

TEST(JsonValue, RealsOfAnyLength_AreTheNearestDoubles) {
  std::mt19937 random(20261124);
  for (int i = 0; i < 5000; ++i) {
    std::string text = (random() % 2 == 0 ? "-" : "") + randomWhole(random, 30) + ".";
    text += std::string(random() % 5, '0') + randomWhole(random, 40);
    if (random() % 2 == 0) text += "e" + std::to_string(static_cast<int>(random() % 640) - 320);
    ASSERT_EQ(numberOf(text, NSNumber::Kind::real), parseDouble(text)) << text;
  }
}

TEST(JsonValue, Numbers) {
  using Kind = NSNumber::Kind;
  EXPECT_EQ(numberOf("-9223372036854775808", Kind::integer), -0x1p63);
  EXPECT_EQ(decodeJson("9223372036854775807").root.number()->intValue(),
            std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(numberOf("9223372036854775808", Kind::real), 0x1p63);
  EXPECT_EQ(numberOf("18446744073709551616", Kind::real), 0x1p64);
  EXPECT_EQ(numberOf("-18446744073709551616", Kind::real), -0x1p64);
  EXPECT_EQ(numberOf("1" + std::string(30, '0'), Kind::real), 1e30);
  EXPECT_EQ(numberOf("85.23", Kind::real), 85.23);
  EXPECT_EQ(numberOf("5e-324", Kind::real), 5e-324);
  EXPECT_EQ(numberOf("1.7976931348623157e308", Kind::real), 1.7976931348623157e308);
  EXPECT_TRUE(std::signbit(numberOf("-0.0", Kind::real)));
  EXPECT_EQ(numberOf("1e400", Kind::real), kInfinity);
  EXPECT_EQ(numberOf("-1.5E+400", Kind::real), -kInfinity);
  EXPECT_EQ(numberOf("1e-400", Kind::real), 0.0);
  EXPECT_EQ(numberOf("1034444444444444459008e0", Kind::real), 1034444444444444459008.0);
  EXPECT_EQ(numberOf("0.123456789012345678901234567", Kind::real), 0.123456789012345678901234567);
  EXPECT_EQ(numberOf("1.000000000000000000001", Kind::real), 1.0);
}

TEST(JsonValue, OneOddNumber_LeavesTheRest) {
  const JsonResult result =
      decodeJson("{\"a\": 123456789012345678901234567890 , \"b\": [1e999\n], \"c\": 2}");
  ASSERT_EQ(result.state, State::value) << result.reason;
  EXPECT_EQ(result.root,
            Value(Dictionary{
                {"a", 123456789012345678901234567890.0}, {"b", Array{kInfinity}}, {"c", 2}}));
}

TEST(JsonValue, EqualKeys_FirstStays) {
  const JsonResult result = decodeJson(R"({"a": 1, "b": 3, "\u0061": 2})");
  EXPECT_EQ(result.root, Value(Dictionary{{"a", 1}, {"b", 3}}));
}

TEST(JsonValue, Faults_AreNotJson) {
  for (const char* text : {"nul",
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
                           "12345678901234567890123x"}) {
    const JsonResult result = decodeJson(text);
    EXPECT_EQ(result.state, State::notJson) << text;
    EXPECT_FALSE(result.reason.empty()) << text;
  }
  EXPECT_EQ(decodeJson(std::string_view("{}\0", 3)).state, State::notJson);
}

TEST(JsonValue, Depth_IsBounded) {
  EXPECT_EQ(decodeJson(nested(256, "[", "]")).state, State::value);
  EXPECT_EQ(decodeJson(nested(257, "[", "]")).state, State::notJson);
  EXPECT_EQ(decodeJson(nested(256, "{\"a\":", "}")).state, State::value);
  EXPECT_EQ(decodeJson(nested(257, "{\"a\":", "}")).state, State::notJson);
  EXPECT_EQ(decodeJson(nested(100'000, "[", "]")).state, State::notJson);
  EXPECT_EQ(decodeJson(std::string(100'000, '[')).state, State::notJson);
  // Only what is open at one place counts.
  EXPECT_EQ(decodeJson("[[1],[1],{\"a\":[1]}]", 3).state, State::value);
}

TEST(JsonValue, Count_IsBounded) {
  EXPECT_EQ(decodeJson("[1,{\"a\":2}]", 9, 4).state, State::value);
  EXPECT_EQ(decodeJson("[1,{\"a\":2}]", 9, 3).state, State::tooLarge);
}

}  // namespace
}  // namespace fexora
