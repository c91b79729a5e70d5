#include "fexora/platform/text/PlainNumbers.h"

#include <algorithm>
#include <cmath>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/text/Decimal.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

constexpr std::string_view kGroupingMarks = ",' ";
constexpr std::string_view kDigits = "0123456789";

// Takes the marks out of the whole part of a number; false when they do not group it in threes.
bool removeGrouping(std::string& text) {
  const auto begin = text.find_first_of(kDigits);
  const auto mark = text.find_first_of(kGroupingMarks);
  if (mark == std::string::npos) return true;
  auto end = text.find_first_of(".Ee");
  if (end == std::string::npos) end = text.size();
  if (begin > mark || mark - begin > 3 || mark > end) return false;
  const char kind = text[mark];
  std::string whole = text.substr(0, mark);
  for (auto at = mark; at < end; at += 4) {
    if (text[at] != kind || end - at < 4) return false;
    whole.append(text, at + 1, 3);
  }
  if (whole.find_first_of(kGroupingMarks) != std::string::npos) return false;
  text.replace(0, end, whole);
  return true;
}

void appendGrouped(std::string& out, std::string_view digits, bool grouping) {
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (grouping && i > 0 && (digits.size() - i) % 3 == 0) out += ',';
    out += digits[i];
  }
}

}  // namespace

std::optional<double> parsePlainNumber(std::string_view text,
                                       std::optional<int> maximumFractionDigits) {
  if (text.empty() || text.size() > limits::kAmountBytes) return std::nullopt;
  std::string ungrouped(text);
  if (!removeGrouping(ungrouped)) return std::nullopt;
  auto number = Decimal::fromText(ungrouped);
  if (!number) return std::nullopt;
  if (!maximumFractionDigits) return parseDouble(ungrouped);
  number->round(std::max(*maximumFractionDigits, 0));
  return number->value();
}

std::string formatPlainNumber(double value, const NumberStyle& style) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value < 0 ? "-∞" : "∞";
  const int most = std::clamp(style.maximumFractionDigits, 0, limits::kFractionDigits);
  const int least = std::clamp(style.minimumFractionDigits, 0, most);
  Decimal number = Decimal::fromDouble(value);
  number.round(most);
  std::string out = number.negative() && !number.isZero() ? "-" : "";
  appendGrouped(out, number.integerDigits(), style.grouping);
  std::string fraction = number.fractionDigits();
  if (fraction.size() < static_cast<std::size_t>(least)) {
    fraction.resize(static_cast<std::size_t>(least), '0');
  }
  if (!fraction.empty()) out.append(".").append(fraction);
  return out;
}

}  // namespace fexora
