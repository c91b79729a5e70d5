#include "fexora/platform/json/simdjson/JsonScan.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

constexpr std::string_view kJsonSpace = " \t\r\n";
constexpr std::string_view kBetween = " \t\r\n,:]}";
constexpr std::string_view kAfterScalar = " \t\r\n,:]}[{\"";
constexpr std::size_t kNone = std::string_view::npos;

// No shorter number is beyond the types: nineteen digits, or an exponent of three.
constexpr std::size_t kShort = 4;

std::size_t endOfText(std::string_view text, std::size_t begin) {
  std::size_t at = begin + 1;
  while (at < text.size() && text[at] != '"') at += text[at] == '\\' ? 2 : 1;
  return std::min(at + 1, text.size());
}

std::size_t endOfScalar(std::string_view text, std::size_t begin) {
  return std::min(text.find_first_of(kAfterScalar, begin), text.size());
}

bool isKey(std::string_view text, std::size_t end) {
  const std::size_t next = text.find_first_not_of(kJsonSpace, end);
  return next != kNone && text[next] == ':';
}

// Cuts the digits off the head; false when there are none.
bool skipDigits(std::string_view& text) {
  const std::size_t count = std::min(text.find_first_not_of("0123456789"), text.size());
  text.remove_prefix(count);
  return count > 0;
}

bool takeOneOf(std::string_view& text, std::string_view signs) {
  if (text.empty() || signs.find(text.front()) == kNone) return false;
  text.remove_prefix(1);
  return true;
}

// The grammar of RFC 8259, section 6.
bool isJsonNumber(std::string_view text) {
  takeOneOf(text, "-");
  if (!takeOneOf(text, "0") && !skipDigits(text)) return false;
  if (takeOneOf(text, ".") && !skipDigits(text)) return false;
  if (takeOneOf(text, "eE")) {
    takeOneOf(text, "+-");
    if (!skipDigits(text)) return false;
  }
  return text.empty();
}

bool isHeld(std::string_view number, double value) {
  if (number.find_first_of(".eE") != kNone) return std::isfinite(value);
  std::uint64_t whole = 0;
  return parseInteger(number).has_value() ||
         std::from_chars(number.data(), number.data() + number.size(), whole).ec == std::errc();
}

// What stands in for a number that cannot be held; empty for all else.
std::string substitute(std::string_view scalar) {
  if (scalar.size() <= kShort || !isJsonNumber(scalar)) return {};
  const double value = parseDouble(scalar).value_or(0);
  if (isHeld(scalar, value)) return {};
  if (!std::isfinite(value)) return std::string("\"").append(scalar).append("\"");
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                 std::chars_format::scientific)
                       .ptr;
  return {digits.data(), end};
}

}  // namespace

JsonScan scanJson(std::string_view text) {
  JsonScan scan;
  std::size_t copied = 0;
  for (std::size_t at = 0; at < text.size();) {
    if (kBetween.find(text[at]) != kNone) {
      ++at;
      continue;
    }
    const bool isOpening = text[at] == '[' || text[at] == '{';
    const bool isText = text[at] == '"';
    const std::size_t end = isOpening ? at + 1
                            : isText  ? endOfText(text, at)
                                      : endOfScalar(text, at);
    if (isOpening || !isKey(text, end)) {
      ++scan.values;
      const std::string other =
          isOpening || isText ? std::string() : substitute(text.substr(at, end - at));
      if (!other.empty()) {
        scan.text.append(text.substr(copied, at - copied)).append(other);
        copied = end;
      }
    }
    at = end;
  }
  scan.text.append(text.substr(copied));
  return scan;
}

}  // namespace fexora
