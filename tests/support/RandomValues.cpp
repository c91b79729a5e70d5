#include "tests/support/RandomValues.h"

#include <bit>
#include <iterator>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace fexora::test {

std::string RandomValues::text() {
  static constexpr std::string_view kPieces[] = {
      "a", "Z", "9", " ", "<", ">", "&", "]]>", "'", "\"", "\r", "\n\t<key>", "\t", "é", "€", "💶"};
  std::string out;
  for (std::uint64_t i = number(12); i > 0; --i) out += kPieces[number(std::size(kPieces))];
  return out;
}

Value RandomValues::leaf() {
  static constexpr double kReals[] = {0.0,
                                      -0.0,
                                      85.23,
                                      5e-324,
                                      1e22,
                                      1.7976931348623157e308,
                                      std::numeric_limits<double>::infinity()};
  switch (number(8)) {
    case 0:
      return number(2) == 0;
    case 1:
      return static_cast<std::int64_t>(engine_());
    case 2:
      return static_cast<std::int64_t>(number(3)) - 1;
    case 3:
      return std::bit_cast<double>(engine_());
    case 4:
      return kReals[number(std::size(kReals))];
    case 5:
      // Whole seconds of the years 1 to 9999.
      return Date(static_cast<double>(number(315537897600)) - 62135596800.0);
    case 6: {
      Data bytes(number(20));
      for (auto& byte : bytes) byte = static_cast<std::uint8_t>(number(256));
      return bytes;
    }
    default:
      return text();
  }
}

Value RandomValues::value(int depth) {
  const std::uint64_t kind = depth > 0 ? number(4) : 3;
  if (kind == 1) return dictionary(6, depth - 1);
  if (kind != 0) return leaf();
  Array items(number(6));
  for (Value& item : items) item = value(depth - 1);
  return items;
}

Dictionary RandomValues::dictionary(std::uint64_t keys, int depth) {
  std::vector<Dictionary::Entry> entries;
  for (std::uint64_t i = number(keys + 1); i > 0; --i) entries.emplace_back(text(), value(depth));
  return Dictionary::fromEntries(entries);
}

}  // namespace fexora::test
