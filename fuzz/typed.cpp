// Typed amounts that say how sure they are. The input is a line with a locale's name and the text;
// the text's bytes also choose an amount and how it is written.
#include <cmath>
#include <iterator>
#include <optional>
#include <random>
#include <string>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/catalogue/EnglishNames.h"
#include "fexora/input/TypedAmount.h"
#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/text/AmountParsing.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/platform/text/Utf8.h"

#include "fuzz/Target.h"

namespace fexora::fuzz {
namespace {

using Kind = TypedAmount::Kind;

bool reads(const TypedAmount& read, double value) {
  return read.kind != Kind::refused && (read.value == value || read.other == value);
}

bool hasNoSmallerUnit(std::string_view currency) {
  const CurrencyFacts* const facts = currencyFacts(currency);
  return facts != nullptr && facts->digits == 0;
}

// Any bytes at all.
void checkText(std::string_view text, std::string_view locale) {
  const TypedAmount read = readAmount(text, locale);
  const bool refused = read.kind == Kind::refused;
  require(std::isfinite(read.value) && std::isfinite(read.other.value_or(0.0)),
          "every reading is finite");
  require(refused == !read.reason.empty(), "what is refused has a reason, and nothing else");
  require(read.place <= text.size(), "the place lies in the text");
  require(read.other.has_value() == (read.kind == Kind::ambiguous), "two readings are ambiguous");
  require(read.other != read.value, "two readings differ");
  require(read.currency.empty() ? read.currencyBy == TypedAmount::CurrencyBy::none
                                : englishName(read.currency).has_value(),
          "a currency is one of the table");
  require(!refused || (read.value == 0.0 && read.currency.empty()), "what is refused is nothing");
  // The number format takes the Arabic decimal mark for one between groups where it is not its own.
  const bool isTheirs = fexora_text_module()->decimalSeparator(locale) == "\u066B";
  const auto parsed = parseAmountIn(locale, text);
  require(
      refused || !parsed || (!isTheirs && text.find("\u066B") != text.npos) || reads(read, *parsed),
      "what parseAmount reads is one of the readings");
}

class Writer {
 public:
  Writer(std::string_view bytes, std::string_view locale)
      : marks_(fexora_text_module()->numberMarks(locale)) {
    std::seed_seq seed(bytes.begin(), bytes.end());
    random_.seed(seed);
  }

  // Writes an amount; `value` is what it stands for.
  std::string write(double& value) {
    const std::string whole = digits(below(4) == 0 ? 1 : 1 + below(13));
    const std::string fraction = below(3) == 0 ? "" : digits(below(3) == 0 ? 3 : 1 + below(6));
    endsInThreeDigits_ = fraction.size() == 3 && whole.size() <= 3 && whole[0] != '0';
    const char* const sign = below(3) == 0 ? kSigns[below(std::size(kSigns))] : "";
    value = parseDouble((*sign != '\0' ? "-" : "") + whole + '.' + fraction + '0').value_or(0.0);
    const std::string number = inScript(marked(whole, fraction));
    const char* const currency = kCurrencies[below(std::size(kCurrencies))];
    const char* const blank = kBlanks[below(std::size(kBlanks))];
    return below(2) == 0 ? std::string(sign) + currency + blank + number
                         : sign + number + blank + currency;
  }

  // Whether what was written last has one mark, with three digits behind it that may be a group.
  bool endsInThreeDigits() const { return endsInThreeDigits_; }

 private:
  static constexpr const char* kSigns[] = {"-", "\u2212", "\u200E-\u200E", "\u061C-", "- "};
  static constexpr const char* kCurrencies[] = {"", "", "$", "€", "kr", "zł", "EUR", "chf", "د.إ."};
  static constexpr const char* kBlanks[] = {"", " ", "\u00A0", "\u202F", "\u2009"};
  static constexpr char32_t kDecimals[] = {U'.', U',', U'\u066B'};
  static constexpr char32_t kGroupings[] = {U'.', U',',      U'\u066C', U'\'', U'\u2019',
                                            U' ', U'\u00A0', U'\u202F', U'_'};
  static constexpr char32_t kZeros[] = {U'0', U'0', U'\u0660', U'\u06F0', U'\u0966', U'\uFF10'};

  std::size_t below(std::size_t bound) { return random_() % bound; }

  // No zero is their first, unless it is the only one.
  std::string digits(std::size_t count) {
    std::string text(count, '0');
    for (char& c : text) c = static_cast<char>('0' + below(10));
    if (count > 1 && text[0] == '0') text[0] = '1';
    return text;
  }

  std::u32string marked(const std::string& whole, const std::string& fraction) {
    const char32_t decimal = kDecimals[below(std::size(kDecimals))];
    const char32_t mark = kGroupings[below(std::size(kGroupings))];
    const std::size_t groups = (whole.size() + 2) / 3;
    // One open mark that is the locale's decimal mark says so.
    const bool misleads = fraction.empty() && groups == 2 &&
                          (mark == marks_.decimal || mark == marks_.currencyDecimal);
    const bool grouped = mark != decimal && !misleads && below(2) == 0;
    std::u32string text;
    for (std::size_t i = 0; i < whole.size(); ++i) {
      if (grouped && i > 0 && (whole.size() - i) % 3 == 0) text += mark;
      text += static_cast<char32_t>(whole[i]);
    }
    if (!fraction.empty()) text += decimal;
    return text.append(fraction.begin(), fraction.end());
  }

  std::string inScript(const std::u32string& number) {
    const char32_t zero = kZeros[below(std::size(kZeros))];
    std::string text;
    for (const char32_t c : number) {
      if (below(16) == 0) text += "\u200F";
      appendUtf8(text, c >= U'0' && c <= U'9' ? c - U'0' + zero : c);
    }
    return text;
  }

  bool endsInThreeDigits_ = false;
  NumberMarks marks_;
  std::mt19937 random_;  // NOLINT(cert-msc51-cpp): seeded by the input
};

void run(std::string_view input) {
  constexpr int kAmounts = 8;
  const auto locale = takeLine(input);
  checkText(input, locale);
  Writer writer(input, locale);
  for (int i = 0; i < kAmounts; ++i) {
    double value = 0;
    const std::string text = writer.write(value);
    checkText(text, locale);
    const TypedAmount read = readAmount(text, locale);
    // Three digits behind the one mark are no fraction of what has no smaller unit.
    const bool isWhole = writer.endsInThreeDigits() && hasNoSmallerUnit(read.currency);
    require(reads(read, isWhole ? std::round(value * 1000) : value) || reads(read, value),
            "one of the readings is what was written");
  }
}

}  // namespace
}  // namespace fexora::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fexora::fuzz::run(fexora::fuzz::textOf(data, size));
  return 0;
}
