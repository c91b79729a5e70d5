#include "fexora/platform/text/OneLine.h"

#include <tuple>

#include <gtest/gtest.h>

namespace fexora {
namespace {

TEST(OneLine, HoldsNothingThatALineOrAFileCannot) {
  const std::string text(limits::kLineCharacters - 1, 'x');
  const std::tuple<std::string, std::size_t, std::string> rows[] = {
      {"", 5, ""},
      {"EUR", 3, "EUR"},
      {"a\r\n\tb\x1b[2J\x7f" + std::string(1, '\0'), 20, "a   b [2J  "},
      {"\u0085\u009B\u2028\u202E\u2067", 20, "     "},
      {"\u200F\u0627\u200D é 円 😀", 20, "\u200F\u0627\u200D é 円 😀"},
      {"x\xFFy\xE2\x82 \xED\xA0\x80", 20, "x\uFFFDy\uFFFD\uFFFD \uFFFD\uFFFD\uFFFD"},
      {"\uFFFE\uFFFF\uFDD0\U0001FFFF", 20, "\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"ééé", 3, "ééé"},
      {"éééé", 3, "éé…"},
      {text + "yz", limits::kLineCharacters, text + "…"},
  };
  for (const auto& [from, most, line] : rows) {
    EXPECT_EQ(oneLine(from, most), line);
    std::string place = from;
    makeOneLine(place, most);
    EXPECT_EQ(place, line);
  }
}

}  // namespace
}  // namespace fexora
