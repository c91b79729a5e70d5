// Typed amounts. The input is a line with a locale's name, a line with a number of digits to keep,
// and the text.
#include <cmath>
#include <optional>
#include <string>

#include "fexora/input/AmountParsing.h"
#include "fexora/input/CalculationDetection.h"
#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/text/Locale.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/platform/values/NSNumber.h"

#include "fuzz/Target.h"

namespace fexora::fuzz {
namespace {

// Bits and all, but for not-a-number.
std::string shown(std::optional<double> value) {
  return value ? (std::signbit(*value) ? "-" : "+") + shortestText(*value) : "none";
}

void checkAmount(std::string_view text, std::optional<int> digits) {
  const auto amount = parseAmount(text, digits);
  require(!amount || !std::isnan(*amount), "a typed text is never not-a-number");
  require(!amount || !text.empty(), "the empty text is no amount");
  const NSNumber number(std::optional<std::string_view>(text), digits);
  require(shown(number.doubleValue()) == shown(amount.value_or(0.0)),
          "a number from a text is the amount, or zero");
  require(number.kind() == NSNumber::Kind::real, "a number from a text is a real");
  number.intValue();
  number.floatValue();
  number.stringValue();
  require(amount == parseAmount(text, digits, *fexora_text_module()) ||
              !Locale::hasPlainNumbers(Locale::current()),
          "plain numbers are read as the text module reads them");
}

// What people are shown they can type.
void checkDisplay(double value, const std::string& locale) {
  NumberStyle style;
  style.maximumFractionDigits = 340;
  style.grouping = false;
  const std::string typed = Text::process().formatNumber(value, locale, style);
  // Equal, but for the sign of a zero, which people are not shown.
  require(!std::isfinite(value) || parseAmount(typed) == value,
          "a number that is shown reads back");
}

void run(std::string_view input) {
  const auto locale = takeLine(input);
  const auto digitsLine = takeLine(input);
  constexpr int kNone = 1000;
  const int digits = smallNumber(digitsLine, kNone);
  Locale::setCurrent(locale);
  checkAmount(input, digits == kNone ? std::nullopt : std::optional(digits));
  hasCalculation(input);
  require(!isCalcOperation(input) || hasCalculation(input), "an operator is a calculation");
  if (const auto value = parseAmount(input)) checkDisplay(*value, Locale::current());
}

}  // namespace
}  // namespace fexora::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fexora::fuzz::run(fexora::fuzz::textOf(data, size));
  return 0;
}
