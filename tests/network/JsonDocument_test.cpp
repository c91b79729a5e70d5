#include "fexora/platform/modules/net/JsonDocument.h"

#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "fexora/platform/mapping/Mapper.h"

#include "tests/network/NetworkTest.h"

namespace fexora::test {
namespace {

// The value under "v", read by itself.
Value valueIn(const std::string& text) {
  const JsonDocument document(text);
  if (document.object() == nullptr) return "no object: " + document.reason();
  Value room;
  const Value* value = document.object()->find("v", room);
  return value != nullptr ? *value : Value("absent");
}

std::shared_ptr<Answer> answerIn(const std::string& text) {
  const JsonDocument document(text);
  return document.object() != nullptr ? Mapper<Answer>::map(*document.object()) : nullptr;
}

// Makes the same text take the slow way: one number is too large for the parser's types.
std::string slow(const std::string& object) {
  return "{\"large\": 1e999, " + object.substr(1);
}

TEST(JsonDocument, EveryKind_AsTheDecoderReadsIt) {
  for (const std::string value :
       {"null", "true", "false", "0", "-1", "9223372036854775807", "18446744073709551615",
        "12345678901234567890123", "1.5", "-0.0", "0.123456789012345678901234567", "\"text\"",
        "\"a longer text with an é and a \\ud83d\\ude00\"", "[]", "[1, [2], {\"x\": {}}]",
        "{\"b\": 1, \"a\": [true, null], \"b\": 2}"}) {
    const std::string text = "{\"w\": 1, \"v\": " + value + ", \"v\": 7}";
    const JsonResult decoded = decodeJson(text);
    ASSERT_EQ(decoded.state, JsonResult::State::value) << value;
    EXPECT_EQ(valueIn(text), *decoded.root.dictionary()->find("v")) << value;
    EXPECT_EQ(valueIn(slow(text)), *decoded.root.dictionary()->find("v")) << value;
  }
  EXPECT_EQ(valueIn("\xEF\xBB\xBF{\"v\": 3}"), Value(3));
  EXPECT_EQ(valueIn("{}"), Value("absent"));
  EXPECT_TRUE(std::isinf(valueIn("{\"v\": 1e999}").number()->doubleValue()));
}

TEST(JsonDocument, Records_OnBothWays) {
  const std::string text =
      R"({"a": 5, "serviceMessage": "m", "rates": [{"code": "EUR", "rate": 0.5},)"
      R"( {"rate": "2", "code": 7, "code": "GBP"}, {}]})";
  for (const std::string& way : {text, slow(text)}) {
    const auto answer = answerIn(way);
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer->a, NSNumber(5));
    EXPECT_EQ(answer->serviceMessage, "m");
    ASSERT_EQ(answer->rates.size(), 3U);
    EXPECT_EQ(answer->rates[0]->code(), "EUR");
    EXPECT_EQ(answer->rates[0]->rate(), NSNumber(0.5));
    EXPECT_EQ(answer->rates[1]->code(), "") << "the first of equal keys counts";
    EXPECT_EQ(answer->rates[1]->rate(), NSNumber(2.0));
  }
  for (const std::string list : {"[{}, 1]", "{}", "null", "[[]]"}) {
    const std::string with = "{\"rates\": " + list + "}";
    EXPECT_TRUE(answerIn(with)->rates.empty()) << list;
    EXPECT_TRUE(answerIn(slow(with))->rates.empty()) << list;
  }
}

TEST(JsonDocument, Refusals_AreTheDecoders) {
  for (const std::string& text :
       {std::string(), std::string("{"), std::string("{} {}"), std::string("{\"v\": 01}"),
        std::string("{\"v\": \"\xFF\"}"), std::string("{\"v\": -}"), std::string("nul")}) {
    const JsonDocument document(text);
    EXPECT_EQ(document.state(), JsonResult::State::notJson) << text;
    EXPECT_EQ(document.reason(), decodeJson(text).reason) << text;
    EXPECT_EQ(document.object(), nullptr) << text;
  }
  const JsonDocument list("[{}]");
  EXPECT_EQ(list.state(), JsonResult::State::value);
  EXPECT_EQ(list.object(), nullptr);
}

TEST(JsonDocument, Bounds_AreTheDecoders) {
  for (const int depth : {limits::kJsonDepth - 1, limits::kJsonDepth, limits::kJsonDepth + 1}) {
    const auto levels = static_cast<std::size_t>(depth - 1);
    const std::string text = "{\"v\": " + std::string(levels, '[') + std::string(levels, ']') + "}";
    EXPECT_EQ(JsonDocument(text).state(), decodeJson(text).state) << depth;
  }
  std::string many = "[0";
  for (std::size_t i = 1; i < limits::kJsonValues; ++i) many += ",0";
  EXPECT_EQ(JsonDocument(many + "]").state(), decodeJson(many + "]").state);
}

}  // namespace
}  // namespace fexora::test
