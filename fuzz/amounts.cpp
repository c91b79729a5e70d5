// Typed amounts. The input is a line with a locale's name, a line with a number of digits to keep,
// and the text.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <optional>
#include <random>
#include <string>

#include "fexora/input/CalculationDetection.h"
#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/text/AmountParsing.h"
#include "fexora/platform/text/Locale.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/platform/text/PlainNumbers.h"
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

constexpr const char* kPlainLocales[] = {"en",    "en_US", "en_GB", "en_AU", "en_CA", "en_IE",
                                         "en_NZ", "en_SG", "en_HK", "en_PH", "C",     "POSIX"};

std::uint8_t byteAt(std::string_view bytes, std::size_t at) {
  return at < bytes.size() ? static_cast<std::uint8_t>(bytes[at]) : std::uint8_t{0};
}

// The bytes as characters of an alphabet, so that every input gives such a text.
std::string spelled(std::string_view bytes, std::string_view alphabet, std::size_t most) {
  std::string text(bytes.substr(0, most));
  for (char& c : text) c = alphabet[static_cast<std::uint8_t>(c) % alphabet.size()];
  return text;
}

// Digits with a mark take a way of their own in every locale: here some of the input's making.
void checkPlainAmounts(std::string_view bytes, const std::string& locale) {
  constexpr int kTexts = 8;
  std::seed_seq seed(bytes.begin(), bytes.end());
  std::mt19937 random(seed);
  Text& rules = *fexora_text_module();
  for (int i = 0; i < kTexts; ++i) {
    std::string text(1 + random() % 18, '0');
    for (char& c : text) c = static_cast<char>('0' + random() % 10);
    if (i > 0) text.insert(random() % (text.size() + 1), ".");
    std::string marked = text;
    if (rules.decimalSeparator(locale) == ",") std::replace(marked.begin(), marked.end(), '.', ',');
    require(shown(parseAmount(text)) == shown(rules.parseNumber(marked, locale, {})),
            "plain amounts are what the locale's number format reads");
  }
}

// Plain numbers are read and written without the module that all others need.
void checkPlainNumbers(std::string_view bytes) {
  const char* const locale = kPlainLocales[byteAt(bytes, 0) % std::size(kPlainLocales)];
  require(Locale::hasPlainNumbers(locale), "these locales have plain numbers");
  const std::string text = spelled(bytes, "0123456789..,,-+Ee '$", 24);
  const int kept = byteAt(bytes, 1) % 12;
  const auto digits = kept < 5 ? std::optional(kept) : std::nullopt;
  require(shown(parsePlainNumber(text, digits)) ==
              shown(fexora_text_module()->parseNumber(text, locale, digits)),
          "plain numbers are read as the text module reads them");
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < 8; ++i) bits = bits << 8U | byteAt(bytes, i);
  const NumberStyle style{byteAt(bytes, 2) % 25, byteAt(bytes, 3) % 6, byteAt(bytes, 4) % 2 == 0};
  const double ties = static_cast<double>(bits % 1'000'000) / 8.0;
  for (const double value : {std::bit_cast<double>(bits), ties, -ties}) {
    require(
        formatPlainNumber(value, style) == fexora_text_module()->formatNumber(value, locale, style),
        "plain numbers are written as the text module writes them");
  }
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
  checkPlainAmounts(input, Locale::current());
  checkPlainNumbers(input);
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
