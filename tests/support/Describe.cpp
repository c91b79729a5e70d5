#include "tests/support/Describe.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "fexora/platform/text/NumberText.h"

namespace fexora::test {
namespace {

template <class Bytes>
std::string hex(const Bytes& bytes) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string out;
  for (const auto byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    out += kDigits[value >> 4U];
    out += kDigits[value & 15U];
  }
  return out;
}

std::string bits(double value) {
  const auto word = std::bit_cast<std::uint64_t>(value);
  std::string bytes;
  for (int shift = 56; shift >= 0; shift -= 8) {
    bytes += static_cast<char>((word >> static_cast<unsigned>(shift)) & 0xFFU);
  }
  return hex(bytes);
}

std::string describeNumber(const NSNumber& number) {
  switch (number.kind()) {
    case NSNumber::Kind::boolean:
      return number.boolValue() ? "b1" : "b0";
    case NSNumber::Kind::integer:
      return "i" + integerText(number.intValue());
    default:
      return std::isnan(number.doubleValue()) ? "rnan" : "r" + bits(number.doubleValue());
  }
}

std::string describeArray(const Array& array) {
  std::string out = "a[";
  for (const Value& item : array) out += describe(item) + ",";
  return out + "]";
}

std::string describeDictionary(const Dictionary& dictionary) {
  std::string out = "d{";
  for (const auto& [key, value] : dictionary) out += hex(key) + ":" + describe(value) + ",";
  return out + "}";
}

}  // namespace

std::string describe(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::number:
      return describeNumber(*value.number());
    case Value::Kind::string:
      return "s" + hex(*value.string());
    case Value::Kind::date:
      return "t" + bits(value.date()->secondsSince1970());
    case Value::Kind::data:
      return "x" + hex(*value.data());
    case Value::Kind::array:
      return describeArray(*value.array());
    case Value::Kind::dictionary:
      return describeDictionary(*value.dictionary());
    default:
      return "n";
  }
}

testing::AssertionResult sameDescription(const std::string& actual, const std::string& expected) {
  if (actual == expected) return testing::AssertionSuccess();
  const auto parted =
      std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end()).first;
  const auto at = static_cast<std::size_t>(parted - actual.begin());
  const std::size_t from = at < 40 ? 0 : at - 40;
  return testing::AssertionFailure() << "at " << at << ": " << actual.substr(from, 100)
                                     << "\nexpected: " << expected.substr(from, 100);
}

}  // namespace fexora::test
