#include "fexora/input/Transforms.h"

#include <gtest/gtest.h>

#include "fexora/platform/mapping/Map.h"

#include "tests/support/LocaleScope.h"

namespace fexora {
namespace {

TEST(NumberTransform, TextsAndNumbersGiveANumber) {
  const Value seven = 7;
  const auto same = NumberTransform().transformFromJSON(&seven);
  ASSERT_TRUE(same.has_value());
  EXPECT_EQ(same->kind(), NSNumber::Kind::integer);
  EXPECT_EQ(same->intValue(), 7);
  for (const char* locale : {"C", "de_CH", "hi_IN"}) {
    const test::LocaleScope scope(locale);
    const Value text = "1.08";
    EXPECT_EQ(NumberTransform().transformFromJSON(&text), NSNumber(1.08)) << locale;
  }
}

TEST(StringTrasform, TextsAndNumbersGiveAText) {
  const Value text = "EUR";
  const Value number = 42;
  const Value real = 0.1;
  EXPECT_EQ(StringTrasform().transformFromJSON(&text), "EUR");
  EXPECT_EQ(StringTrasform().transformFromJSON(&number), "42");
  EXPECT_EQ(StringTrasform().transformFromJSON(&real), "0.1");
  EXPECT_EQ(StringTrasform().transformToJSON("x"), "x");
  EXPECT_EQ(StringTrasform().transformToJSON(std::nullopt), std::nullopt);
}

TEST(Transforms, OtherValues_LeaveTheFieldAsItWas) {
  const Dictionary values{{"list", Value(Array{1})}, {"null", Value()}, {"date", Value(Date(0))}};
  const DictionarySource source(values);
  Map map = Map::reading(source);
  NSNumber number = 3;
  std::string text = "kept";
  for (const char* key : {"list", "null", "date", "absent"}) {
    map.bind(key, number, NumberTransform{});
    map.bind(key, text, StringTrasform{});
  }
  EXPECT_EQ(number, NSNumber(3));
  EXPECT_EQ(text, "kept");
}

TEST(Transforms, Writing_GivesTheFieldItself) {
  Map map = Map::writing();
  NSNumber number = true;
  std::string text = "1.5";
  map.bind("number", number, NumberTransform{});
  map.bind("text", text, StringTrasform{});
  const Dictionary written = map.takeResult();
  EXPECT_EQ(written.find("number")->number()->kind(), NSNumber::Kind::boolean);
  EXPECT_EQ(*written.find("text")->string(), "1.5");
}

}  // namespace
}  // namespace fexora
