#include "fexora/platform/text/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace fexora {
namespace {

// Whether the decimal text that overflowed or underflowed a double is a large one: decided by the
// place of its first digit other than zero, counted with the exponent.
bool isLarge(std::string_view text) {
  std::int64_t place = 0;
  bool seenDigit = false;
  bool afterPoint = false;
  std::size_t i = 0;
  for (; i < text.size() && text[i] != 'e' && text[i] != 'E'; ++i) {
    if (text[i] == '.') {
      afterPoint = true;
    } else if (text[i] >= '0' && text[i] <= '9') {
      seenDigit = seenDigit || text[i] != '0';
      if (!afterPoint && seenDigit) ++place;
      if (afterPoint && !seenDigit) --place;
    }
  }
  if (i >= text.size()) return place > 0;
  std::string_view exponent = text.substr(i + 1);
  const bool negative = exponent.starts_with('-');
  if (negative || exponent.starts_with('+')) exponent.remove_prefix(1);
  std::int64_t power = 0;
  const auto parsed = std::from_chars(exponent.data(), exponent.data() + exponent.size(), power).ec;
  if (parsed == std::errc::result_out_of_range) return !negative;
  return (negative ? -power : power) + place > 0;
}

}  // namespace

std::string shortestText(double value) {
  std::string out;
  appendShortestText(out, value);
  return out;
}

std::string integerText(std::int64_t value) {
  std::string out;
  appendIntegerText(out, value);
  return out;
}

char* writeShortestText(char* at, double value) noexcept {
  constexpr std::string_view kNan = "nan";
  // std::to_chars would write its sign, too.
  if (std::isnan(value)) return std::copy(kNan.begin(), kNan.end(), at);
  return std::to_chars(at, at + kNumberTextBytes, value).ptr;
}

char* writeIntegerText(char* at, std::int64_t value) noexcept {
  return std::to_chars(at, at + kNumberTextBytes, value).ptr;
}

void appendShortestText(std::string& out, double value) {
  std::array<char, kNumberTextBytes> buffer{};
  out.append(buffer.data(), writeShortestText(buffer.data(), value));
}

void appendIntegerText(std::string& out, std::int64_t value) {
  std::array<char, kNumberTextBytes> buffer{};
  out.append(buffer.data(), writeIntegerText(buffer.data(), value));
}

std::string fixedText(double value, int digits) {
  if (!std::isfinite(value)) return shortestText(value);
  // The largest double has 309 digits before the point.
  std::string out(static_cast<std::size_t>(320 + digits), '\0');
  const auto end =
      std::to_chars(out.data(), out.data() + out.size(), value, std::chars_format::fixed, digits)
          .ptr;
  out.resize(static_cast<std::size_t>(end - out.data()));
  return out;
}

std::optional<double> parseDouble(std::string_view text) {
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return std::nullopt;
  }
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (stop != end || text.empty() || error == std::errc::invalid_argument) return std::nullopt;
  if (error == std::errc::result_out_of_range) {
    const double size = isLarge(text) ? std::numeric_limits<double>::infinity() : 0.0;
    return text.starts_with('-') ? -size : size;
  }
  return value;
}

std::optional<std::int64_t> parseInteger(std::string_view text) {
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return std::nullopt;
  }
  std::int64_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (stop != end || text.empty() || error != std::errc()) return std::nullopt;
  return value;
}

}  // namespace fexora
